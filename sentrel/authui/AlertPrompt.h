#pragma once

#include "sentrel/authui/PromptSurface.h"
#include "sentrel/platform/Late.h"

namespace sentrel {

class Bridge;
class SNAlertController;
class SNAuthenticationViewController;

/// The prompt of a system that has alert controllers. Its content is one for the whole process.
class SENTREL_API AlertPrompt final : public PromptSurface {
 public:
  /// `bridge` outlives the surface.
  AlertPrompt(Bridge& bridge, Late<SNAuthenticationViewController> content)
      : bridge_(bridge), content_(std::move(content)) {}

  void prepare(bool isPasscodeForced) override;
  std::optional<Seconds> waitBeforeShowing() const override;
  void show(const Prompt& prompt) override;
  void forget() override { alert_ = nullptr; }
  void dismiss(bool animated, Completion completion) override;
  bool tellsWhenDismissed() const override { return true; }
  std::shared_ptr<UIResponder> alert() const override;
  bool isShowing() const override;
  std::shared_ptr<UIView> shakenView() const override;
  std::shared_ptr<SNAuthenticationView> viewInUse() const override;
  void animateGlyph(GlyphState state, bool animated, Completion completion) override;
  void keepVisible() const override;

 private:
  void addActions(const Prompt& prompt);
  void present(const Prompt& prompt);

  Bridge& bridge_;
  Late<SNAuthenticationViewController> content_;
  std::shared_ptr<SNAlertController> alert_;
};

}  // namespace sentrel
