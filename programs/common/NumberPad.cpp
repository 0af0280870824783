#include "programs/common/NumberPad.h"

#include <array>

#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIScreen.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::programs {
namespace {

constexpr double gap = 6;

/// Row by row; an empty one is no key.
constexpr std::array keys = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "", "0", "⌫"};

bool isDark() {
  return UIScreen::mainScreen().userInterfaceStyle() == UIUserInterfaceStyle::dark;
}

const UIClass& windowClass() {
  static const UIClass uiClass("UIRemoteKeyboardWindow", &UIWindow::staticClass());
  return uiClass;
}

std::shared_ptr<UILabel> makeKey(const CGRect& frame, const char* text) {
  auto key = std::make_shared<UILabel>(frame);
  key->setText(text);
  key->setFont(UIFont::systemFontOfSize(25));
  key->setTextAlignment(NSTextAlignment::center);
  key->layer().setCornerRadius(5);
  if (*text >= '0' && *text <= '9')
    key->setBackgroundColor(isDark() ? UIColor::colorWithWhite(1, 0.3)
                                     : UIColor::colorWithWhite(1, 0.95));
  return key;
}

void addKeys(UIView& pad) {
  const double width = (pad.bounds().size.width - 4 * gap) / 3;
  const double height = (numberPadHeight - 5 * gap) / 4;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const std::size_t row = i / 3;
    const double x = gap + static_cast<double>(i % 3) * (width + gap);
    const double y = gap + static_cast<double>(row) * (height + gap);
    if (*keys[i]) pad.addSubview(makeKey(CGRectMake(x, y, width, height), keys[i]));
  }
}

}  // namespace

std::shared_ptr<UIWindow> makeNumberPad(CGSize screen) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, screen}, windowClass());
  window->setWindowLevel(UIWindowLevelAlert + 1);
  const auto pad = std::make_shared<UIVisualEffectView>(
      UIBlurEffect::effectWithStyle(isDark() ? 2 : 0),
      CGRectMake(0, screen.height - numberPadHeight, screen.width, numberPadHeight));
  addKeys(*pad);
  window->addSubview(pad);
  window->setHidden(/*hidden=*/false);
  return window;
}

}  // namespace sentrel::programs
