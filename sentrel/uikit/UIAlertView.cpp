#include "sentrel/uikit/UIAlertView.h"

#include <utility>

#include "sentrel/uikit/AlertPanel.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIScreen.h"
#include "sentrel/uikit/UIViewController.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel {
namespace {

const UIClass& hostWindowClass() {
  static const UIClass uiClass("_UIModalItemHostingWindow", &UIWindow::staticClass());
  return uiClass;
}

}  // namespace

UIAlertView::UIAlertView(std::string title, std::optional<std::string> message,
                         std::weak_ptr<UIAlertViewDelegate> delegate, std::string cancelButtonTitle,
                         const UIClass& uiClass)
    : UIView({}, uiClass),
      _updateButtonTitle(
          [this](const std::string& text, int index) { setButtonTitle(index, text); }),
      _changeButtonTitleAtIndex(
          [this](int index, const std::string& text) { setButtonTitle(index, text); }),
      title_(std::move(title)),
      message_(std::move(message)),
      delegate_(std::move(delegate)),
      buttonTitles_{std::move(cancelButtonTitle)},
      panel_(std::make_shared<AlertPanel>(title_, message_, [this] { return makeButtons(); })) {
  panel_->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
  addSubview(panel_);
}

UIAlertView::~UIAlertView() = default;

const UIClass& UIAlertView::staticClass() {
  static const UIClass uiClass("UIAlertView", &UIView::staticClass());
  return uiClass;
}

// --- Buttons -----------------------------------------------------------------------------------

int UIAlertView::addButtonWithTitle(std::string title) {
  buttonTitles_.push_back(std::move(title));
  if (isVisible()) panel_->buttons()->reloadData();
  return numberOfButtons() - 1;
}

std::string UIAlertView::buttonTitleAtIndex(int index) const {
  return index >= 0 && index < numberOfButtons() ? buttonTitles_[static_cast<std::size_t>(index)]
                                                 : std::string();
}

void UIAlertView::setButtonTitle(int index, const std::string& title) {
  if (index < 0 || index >= numberOfButtons()) return;
  buttonTitles_[static_cast<std::size_t>(index)] = title;
  if (isVisible()) panel_->buttons()->reloadData();
}

std::vector<std::shared_ptr<UIView>> UIAlertView::makeButtons() {
  std::vector<std::shared_ptr<UIView>> buttons;
  const std::weak_ptr<UIResponder> self = weak_from_this();
  for (int index = 0; index < numberOfButtons(); ++index) {
    const auto tapped = [self, index] {
      if (const auto alert = std::static_pointer_cast<UIAlertView>(self.lock())) alert->tap(index);
    };
    buttons.push_back(AlertPanel::makeButton(buttonTitleAtIndex(index),
                                             index == cancelButtonIndex(), /*isEnabled=*/true,
                                             UIColor::systemBlueColor(), tapped));
  }
  return buttons;
}

void UIAlertView::setAccessoryView(std::shared_ptr<UIView> view) {
  accessoryView_ = std::move(view);
  panel_->setContent(accessoryView_,
                     [this] { return accessoryView_ ? accessoryView_->bounds().size.height : 0; });
}

// --- Coming and going --------------------------------------------------------------------------

void UIAlertView::show() {
  if (isVisible()) return;
  const auto window =
      std::make_shared<UIWindow>(UIScreen::mainScreen().bounds(), hostWindowClass());
  window->setWindowLevel(UIWindowLevelAlert);
  window->setBackgroundColor(UIColor::colorWithWhite(0, 0.2));
  window->setKeptByApplication(/*value=*/true);
  hostWindow_ = window;
  panel_->buttons()->reloadData();
  setFrame(panel_->frameCenteredIn(window->bounds()));
  window->addSubview(std::static_pointer_cast<UIView>(shared_from_this()));
  window->setHidden(/*hidden=*/false);
}

bool UIAlertView::hide() {
  const auto window = std::exchange(hostWindow_, {}).lock();
  if (!window) return false;
  window->setKeptByApplication(/*value=*/false);
  removeFromSuperview();
  return true;
}

void UIAlertView::dismissWithClickedButtonIndex(int index, bool animated) {
  const auto self = std::static_pointer_cast<UIAlertView>(shared_from_this());
  if (!hide()) return;
  const Seconds delay = animated ? UIViewController::transitionDuration : Seconds(0);
  // The delegate is told even if the alert's owner lets it go meanwhile.
  UIApplication::sharedApplication().platform().mainQueue->after(delay, [self, index] {
    if (const auto delegate = self->delegate()) delegate->alertView(*self, index);
  });
}

void UIAlertView::dismissAnimated(bool /*animated*/) {
  const auto self = shared_from_this();
  hide();
}

void UIAlertView::_dismissForTappedIndex(int index) {
  dismissWithClickedButtonIndex(index, /*animated=*/true);
}

bool UIAlertView::_prepareToDismissForTappedIndex(int /*index*/) {
  return true;
}

void UIAlertView::tap(int index) {
  if (!isVisible() || index < 0 || index >= numberOfButtons()) return;
  const auto self = shared_from_this();
  if (_prepareToDismissForTappedIndex(index)) endEditing(/*force=*/true);
  _dismissForTappedIndex(index);
}

}  // namespace sentrel
