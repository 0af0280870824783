#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel {

UIVisualEffectView::UIVisualEffectView(UIBlurEffect effect, const CGRect& frame,
                                       const UIClass& uiClass)
    : UIView(frame, uiClass),
      effect_(effect),
      contentView_(std::make_shared<UIView>(CGRect{{}, frame.size})) {
  contentView_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth |
                                    UIViewAutoresizingFlexibleHeight);
  addSubview(contentView_);
}

const UIClass& UIVisualEffectView::staticClass() {
  static const UIClass uiClass("UIVisualEffectView", &UIView::staticClass());
  return uiClass;
}

}  // namespace sentrel
