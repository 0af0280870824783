#include "sentrel/authui/SNAlertView.h"

#include "sentrel/authui/SwitchButton.h"

namespace sentrel {

const UIClass& SNAlertView::staticClass() {
  static const UIClass uiClass("SNAlertView", &UIAlertView::staticClass());
  return uiClass;
}

void SNAlertView::setAuthView(std::shared_ptr<SNAuthenticationView> view) {
  authView_ = view;
  setAccessoryView(std::move(view));
}

void SNAlertView::_dismissForTappedIndex(int index) {
  if (index == cancelButtonIndex()) {
    UIAlertView::_dismissForTappedIndex(index);
    dismissAnimated(/*animated=*/true);
  } else if (!isSwitchButtonTitle(buttonTitleAtIndex(index))) {
    UIAlertView::_dismissForTappedIndex(index);
  } else {
    renameSwitchButton(index);
    if (const auto receiver = delegate()) receiver->alertView(*this, index);
  }
}

void SNAlertView::renameSwitchButton(int index) {
  const std::string title = switchButtonTitleAfter(buttonTitleAtIndex(index));
  if (_updateButtonTitle)
    _updateButtonTitle(title, index);
  else if (_changeButtonTitleAtIndex)
    _changeButtonTitleAtIndex(index, title);
}

bool SNAlertView::_prepareToDismissForTappedIndex(int index) {
  return index == cancelButtonIndex();
}

}  // namespace sentrel
