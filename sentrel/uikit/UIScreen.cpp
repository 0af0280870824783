#include "sentrel/uikit/UIScreen.h"

#include "sentrel/uikit/UIApplication.h"

namespace sentrel {
namespace {

const Screen* screen() {
  return UIApplication::sharedApplication().platform().screen.get();
}

}  // namespace

CGRect UIScreen::bounds() const {
  return screen() ? screen()->bounds() : CGRectMake(0, 0, 375, 667);
}

double UIScreen::scale() const {
  return screen() ? screen()->scale() : 2;
}

std::optional<UIUserInterfaceStyle> UIScreen::userInterfaceStyle() const {
  return screen() ? screen()->userInterfaceStyle() : std::nullopt;
}

}  // namespace sentrel
