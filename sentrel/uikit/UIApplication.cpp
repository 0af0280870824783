#include "sentrel/uikit/UIApplication.h"

#include <algorithm>
#include <string>

#include "sentrel/uikit/UIWindow.h"

namespace sentrel {

std::vector<std::shared_ptr<UIWindow>> UIApplication::windows() const {
  std::vector<std::shared_ptr<UIWindow>> windows;
  for (UIWindow* each : windows_)
    if (auto window = std::static_pointer_cast<UIWindow>(each->weak_from_this().lock()))
      windows.push_back(std::move(window));
  std::ranges::stable_sort(windows, {}, [](const auto& window) { return window->windowLevel(); });
  return windows;
}

void UIApplication::giveUpFirstResponder() {
  if (firstResponder_.expired()) return;
  firstResponder_.reset();
  platform_.localCenter->post({std::string(UIKeyboardWillHideNotification), std::nullopt});
}

}  // namespace sentrel
