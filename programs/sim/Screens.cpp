#include "programs/sim/Screens.h"

#include "sentrel/bridge/SNUtils.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIScreen.h"

namespace sentrel::sim {
namespace {

constexpr double barHeight = 72;
constexpr double rowHeight = 56;

bool isDark() {
  return UIScreen::mainScreen().userInterfaceStyle() == UIUserInterfaceStyle::dark;
}

UIColor paper() {
  return UIColor::colorWithWhite(isDark() ? 0.08 : 0.97, 1);
}

UIColor ink(double strength) {
  return UIColor::colorWithWhite(isDark() ? strength : 1 - strength, 1);
}

std::shared_ptr<UIView> makeBlock(const CGRect& frame, const UIColor& color, double radius = 0) {
  auto block = std::make_shared<UIView>(frame);
  block->setBackgroundColor(color);
  block->layer().setCornerRadius(radius);
  return block;
}

std::shared_ptr<UILabel> makeTitle(const CGRect& frame, const std::string& text, double size,
                                   const UIColor& color) {
  auto title = std::make_shared<UILabel>(frame);
  title->setText(text);
  title->setFont(UIFont::boldSystemFontOfSize(size));
  title->setTextColor(color);
  title->setTextAlignment(NSTextAlignment::center);
  return title;
}

/// A row of an application: a picture and two lines that stand for text.
void addRow(UIView& window, double top, double width, int number) {
  const double hue = 0.35 + 0.05 * (number % 5);
  window.addSubview(
      makeBlock(CGRectMake(16, top + 8, 40, 40), UIColor::colorWithRed(hue, 0.55, 1 - hue, 1), 8));
  window.addSubview(
      makeBlock(CGRectMake(72, top + 14, width * (0.35 + 0.07 * (number % 4)), 9), ink(0.75), 4));
  window.addSubview(makeBlock(CGRectMake(72, top + 32, width * 0.6, 7), ink(0.35), 3));
}

}  // namespace

std::shared_ptr<UIWindow> makeApplicationScreen(CGSize size, const std::string& name) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, size});
  window->setBackgroundColor(paper());
  int number = 0;
  for (double top = barHeight + 8; top + rowHeight < size.height; top += rowHeight)
    addRow(*window, top, size.width, number++);
  window->addSubview(makeBlock(CGRectMake(0, 0, size.width, barHeight), ink(0.1)));
  window->addSubview(makeTitle(CGRectMake(0, 30, size.width, 30), name, 18, ink(0.95)));
  window->setHidden(/*hidden=*/false);
  return window;
}

std::shared_ptr<UIWindow> makeLockScreen(CGSize size) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, size});
  window->setWindowLevel(UIWindowLevelStatusBar);
  window->setBackgroundColor(UIColor::colorWithRed(0.1, 0.13, 0.25, 1));
  window->addSubview(makeTitle(CGRectMake(0, size.height * 0.16, size.width, 40),
                               std::string(SNUtils::localizedString("Locked")), 32,
                               UIColor::whiteColor()));
  window->addSubview(makeBlock(CGRectMake(size.width / 2 - 60, size.height - 16, 120, 5),
                               UIColor::colorWithWhite(1, 0.8), 2.5));
  window->setHidden(/*hidden=*/false);
  return window;
}

}  // namespace sentrel::sim
