#include "sentrel/uikit/UIImageView.h"

namespace sentrel {

UIImageView::UIImageView(const CGRect& frame, const UIClass& uiClass) : UIView(frame, uiClass) {
  setUserInteractionEnabled(/*value=*/false);
}

const UIClass& UIImageView::staticClass() {
  static const UIClass uiClass("UIImageView", &UIView::staticClass());
  return uiClass;
}

}  // namespace sentrel
