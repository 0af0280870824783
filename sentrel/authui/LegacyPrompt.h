#pragma once

#include "sentrel/authui/PromptSurface.h"
#include "sentrel/platform/Late.h"

namespace sentrel {

class Bridge;
class SNAlertView;

/// The prompt of a system that has legacy alert views. Its content is one for the whole process.
class SENTREL_API LegacyPrompt final : public PromptSurface {
 public:
  /// `bridge` outlives the surface.
  LegacyPrompt(Bridge& bridge, Late<SNAuthenticationView> content)
      : bridge_(bridge), content_(std::move(content)) {}

  void prepare(bool /*isPasscodeForced*/) override {}
  std::optional<Seconds> waitBeforeShowing() const override { return std::nullopt; }
  void show(const Prompt& prompt) override;
  void forget() override { alert_ = nullptr; }
  void dismiss(bool animated, Completion completion) override;
  bool tellsWhenDismissed() const override { return false; }
  std::shared_ptr<UIResponder> alert() const override;
  bool isShowing() const override;
  std::shared_ptr<UIView> shakenView() const override;
  std::shared_ptr<SNAuthenticationView> viewInUse() const override;
  void animateGlyph(GlyphState state, bool animated, Completion completion) override;
  void keepVisible() const override {}

 private:
  void settleMode(SNAuthenticationView& view, const Prompt& prompt);

  Bridge& bridge_;
  Late<SNAuthenticationView> content_;
  std::shared_ptr<SNAlertView> alert_;
};

}  // namespace sentrel
