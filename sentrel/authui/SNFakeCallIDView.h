#pragma once

#include <memory>

#include "sentrel/platform/Export.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel {

/// Three lines of text in place of a caller's details. Texts and colours are those of the last
/// updateData; a new cover has no texts.
class SENTREL_API SNFakeCallIDView : public UIView {
 public:
  explicit SNFakeCallIDView(const CGRect& frame = {});
  static const UIClass& staticClass();

  /// A centred label that shrinks its text to fit.
  static std::shared_ptr<UILabel> createLabel(const UIColor& textColor, UIFontTextStyle fontStyle);

  const std::shared_ptr<UILabel>& callerNameLabel() const noexcept { return callerNameLabel_; }
  const std::shared_ptr<UILabel>& callerIDLabel() const noexcept { return callerIDLabel_; }
  const std::shared_ptr<UILabel>& sentrelCopyLabel() const noexcept { return sentrelCopyLabel_; }

  void layoutSubviews() override;

  /// Takes on the present appearance and the texts of the settings.
  void updateData();

 private:
  std::shared_ptr<UILabel> callerNameLabel_;
  std::shared_ptr<UILabel> callerIDLabel_;
  std::shared_ptr<UILabel> sentrelCopyLabel_;
};

}  // namespace sentrel
