#include "device/screen/UserInput.h"

#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::screen {
namespace {

/// From the superview's coordinates into the view's own.
CGPoint pointInside(const UIView& view, CGPoint point) {
  const CGPoint center = view.center();
  const CGPoint upright =
      view.transform().inverted().apply(CGPoint{point.x - center.x, point.y - center.y});
  return {upright.x + view.bounds().midX(), upright.y + view.bounds().midY()};
}

bool contains(const CGRect& rect, CGPoint point) {
  return point.x >= rect.origin.x && point.x < rect.maxX() && point.y >= rect.origin.y &&
         point.y < rect.maxY();
}

bool takesTouches(const UIView& view) {
  return !view.isHidden() && view.alpha() > 0.01 && view.isUserInteractionEnabled();
}

/// `point` is in the coordinates of the view's superview.
std::shared_ptr<UIView> touchedView(const std::shared_ptr<UIView>& view, CGPoint point) {
  if (!takesTouches(*view)) return nullptr;
  const CGPoint inside = pointInside(*view, point);
  if (!contains(view->bounds(), inside)) return nullptr;
  const auto& subviews = view->subviews();
  for (auto each = subviews.rbegin(); each != subviews.rend(); ++each)
    if (auto touched = touchedView(*each, inside)) return touched;
  return view;
}

bool isControl(const UIView& view) {
  return dynamic_cast<const UIButton*>(&view) || dynamic_cast<const UITextField*>(&view);
}

std::shared_ptr<UIView> controlAround(std::shared_ptr<UIView> view) {
  while (view && !isControl(*view))
    view = view->superview();
  return view;
}

std::shared_ptr<UITextField> editedField(const UIApplication& application) {
  return std::dynamic_pointer_cast<UITextField>(application.firstResponder());
}

}  // namespace

std::shared_ptr<UIView> viewAtPoint(const UIApplication& application, CGPoint point) {
  const auto windows = application.windows();
  for (auto window = windows.rbegin(); window != windows.rend(); ++window)
    if (auto touched = touchedView(*window, point)) return touched;
  return nullptr;
}

void UserInput::touchBegan(CGPoint point) {
  const std::shared_ptr<UIView> control = controlAround(viewAtPoint(application_, point));
  touched_ = control;
  if (const auto button = std::dynamic_pointer_cast<UIButton>(control))
    button->setHighlighted(button->isEnabled());
}

void UserInput::touchMoved(CGPoint point) {
  if (const auto button = std::dynamic_pointer_cast<UIButton>(touched_.lock()))
    button->setHighlighted(button->isEnabled() && isOnTouched(point));
}

void UserInput::touchEnded(CGPoint point) {
  const bool inside = isOnTouched(point);
  const std::shared_ptr<UIView> control = touched_.lock();
  touchCancelled();
  if (!inside) return;
  if (const auto button = std::dynamic_pointer_cast<UIButton>(control)) button->tap();
  if (const auto field = std::dynamic_pointer_cast<UITextField>(control))
    field->becomeFirstResponder();
}

void UserInput::touchCancelled() {
  if (const auto button = std::dynamic_pointer_cast<UIButton>(touched_.lock()))
    button->setHighlighted(/*value=*/false);
  touched_.reset();
}

void UserInput::typeText(const std::string& text) {
  if (const auto field = editedField(application_)) field->insertText(text);
}

void UserInput::pressBackspace() {
  if (const auto field = editedField(application_)) field->deleteBackward();
}

bool UserInput::isOnTouched(CGPoint point) const {
  const std::shared_ptr<UIView> control = touched_.lock();
  return control && controlAround(viewAtPoint(application_, point)) == control;
}

}  // namespace sentrel::screen
