#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIButton.h"
#include "sentrel/uikit/UITextField.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::programs {

// The user's hands on what the current process shows.

/// The field that takes what is typed now, or null.
inline std::shared_ptr<UITextField> focusedField() {
  return std::dynamic_pointer_cast<UITextField>(
      UIApplication::sharedApplication().firstResponder());
}

/// Types one character after the other. Whether there was a field, and it took every one.
inline bool type(std::string_view characters) {
  bool taken = focusedField() != nullptr;
  for (const char character : characters) {
    const auto field = focusedField();
    taken = field && field->insertText(std::string(1, character)) && taken;
  }
  return taken;
}

/// The frontmost button inside `view` that shows `title`, or null. What is hidden is passed over.
inline std::shared_ptr<UIButton> visibleButton(const std::shared_ptr<UIView>& view,
                                               std::string_view title) {
  if (view->isHidden()) return nullptr;
  auto button = std::dynamic_pointer_cast<UIButton>(view);
  if (button && button->currentTitle() == title) return button;
  const auto& subviews = view->subviews();
  for (auto subview = subviews.rbegin(); subview != subviews.rend(); ++subview)
    if (auto found = visibleButton(*subview, title)) return found;
  return nullptr;
}

/// The same in every window, the front one first.
inline std::shared_ptr<UIButton> visibleButton(std::string_view title) {
  const auto windows = UIApplication::sharedApplication().windows();
  for (auto window = windows.rbegin(); window != windows.rend(); ++window)
    if (auto found = visibleButton(*window, title)) return found;
  return nullptr;
}

/// Taps the button that shows `title`. Whether there is one that can be tapped.
inline bool tapButton(std::string_view title) {
  const auto button = visibleButton(title);
  if (!button || !button->isEnabled()) return false;
  button->tap();
  return true;
}

}  // namespace sentrel::programs
