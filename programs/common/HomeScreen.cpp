#include "programs/common/HomeScreen.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::programs {
namespace {

struct IconKind {
  const char* name;
  std::array<int, 3> color;
};

constexpr std::array icons = {
    IconKind{"Letters", {46, 134, 222}},  IconKind{"Album", {235, 94, 85}},
    IconKind{"Maps", {58, 175, 105}},     IconKind{"Ledger", {247, 183, 49}},
    IconKind{"Notes", {155, 89, 182}},    IconKind{"Radio", {230, 126, 34}},
    IconKind{"Diary", {26, 188, 156}},    IconKind{"Chess", {52, 73, 94}},
    IconKind{"Weather", {52, 172, 224}},  IconKind{"Wallet", {44, 62, 80}},
    IconKind{"Camera", {120, 130, 140}},  IconKind{"Library", {192, 57, 43}},
    IconKind{"Recipes", {255, 121, 121}}, IconKind{"Sleep", {72, 52, 212}},
    IconKind{"Garden", {106, 176, 76}},   IconKind{"Tickets", {224, 86, 253}},
};

constexpr double iconSide = 60;
constexpr int columns = 4;
constexpr int imageSide = 120;

double mix(double from, double to, double part) {
  return from + (to - from) * part;
}

/// Stripes of slowly changing colour from the top to the bottom.
void addWallpaper(UIView& window, UIUserInterfaceStyle style) {
  constexpr int stripes = 48;
  const double dim = style == UIUserInterfaceStyle::dark ? 0.45 : 1;
  const CGSize size = window.bounds().size;
  for (int i = 0; i < stripes; ++i) {
    const double part = static_cast<double>(i) / (stripes - 1);
    const double top = std::floor(size.height * i / stripes);
    const double bottom = std::floor(size.height * (i + 1) / stripes);
    const auto stripe = std::make_shared<UIView>(CGRectMake(0, top, size.width, bottom - top));
    stripe->setBackgroundColor(UIColor::colorWithRed(
        dim * mix(0.16, 0.93, part), dim * mix(0.34, 0.52, part), dim * mix(0.62, 0.45, part), 1));
    window.addSubview(stripe);
  }
}

std::shared_ptr<UIImageView> makeIcon(CGPoint origin, int number) {
  auto icon = std::make_shared<UIImageView>(CGRect{origin, {iconSide, iconSide}});
  icon->setImage(makeIconImage(number));
  icon->layer().setCornerRadius(13.5);
  icon->setClipsToBounds(/*value=*/true);
  return icon;
}

std::shared_ptr<UILabel> makeName(const CGRect& iconFrame, const char* name) {
  auto label = std::make_shared<UILabel>(
      CGRectMake(iconFrame.origin.x - 8, iconFrame.maxY() + 4, iconSide + 16, 15));
  label->setText(name);
  label->setFont(UIFont::systemFontOfSize(11.5));
  label->setTextColor(UIColor::whiteColor());
  label->setTextAlignment(NSTextAlignment::center);
  return label;
}

/// Where the icon in that column and row stands.
CGPoint iconOrigin(CGSize screen, int column, double top) {
  const double gap = (screen.width - columns * iconSide) / (columns + 1);
  return {gap + column * (iconSide + gap), top};
}

void addIcons(UIView& window) {
  const CGSize screen = window.bounds().size;
  const double rowHeight = screen.height > 900 ? 130 : 88;
  const int rows = std::min(static_cast<int>((screen.height - 160) / rowHeight), 6);
  for (int i = 0; i < rows * columns; ++i) {
    const int row = i / columns;
    const int number = i % static_cast<int>(icons.size());
    const auto icon = makeIcon(iconOrigin(screen, i % columns, 36 + row * rowHeight), number);
    window.addSubview(icon);
    window.addSubview(makeName(icon->frame(), icons[static_cast<std::size_t>(number)].name));
  }
}

void addDock(UIView& window, UIUserInterfaceStyle style) {
  constexpr double height = 92;
  const CGSize screen = window.bounds().size;
  const auto dock = std::make_shared<UIVisualEffectView>(
      UIBlurEffect::effectWithStyle(style == UIUserInterfaceStyle::dark ? 2 : 1),
      CGRectMake(0, screen.height - height, screen.width, height));
  dock->setAlpha(0.9);
  window.addSubview(dock);
  for (int column = 0; column < columns; ++column)
    window.addSubview(
        makeIcon(iconOrigin(screen, column, screen.height - height + 16), 3 * column + 2));
}

/// 1 inside a disc of that radius, 0 outside.
double discAt(double distance, double radius) {
  return std::clamp(radius + 0.5 - distance, 0.0, 1.0);
}

/// How much of an icon's sign, a ring or a ring about a dot, lies at a distance from its middle.
double signAt(int number, double distance) {
  const double ring = discAt(distance, 34) - discAt(distance, 23);
  return ring + (number % 2 == 0 ? discAt(distance, 11) : 0);
}

}  // namespace

std::shared_ptr<const UIImage> makeIconImage(int number) {
  const auto& [red, green, blue] = icons[static_cast<std::size_t>(number) % icons.size()].color;
  auto image = std::make_shared<UIImage>();
  constexpr double middle = imageSide / 2.0;
  image->width = image->height = imageSide;
  image->scale = 2;
  for (int y = 0; y < imageSide; ++y)
    for (int x = 0; x < imageSide; ++x) {
      const double distance = std::hypot(x + 0.5 - middle, y + 0.5 - middle);
      const double shine = 0.25 * (1 - static_cast<double>(y) / imageSide);
      const double light = mix(shine, 0.94, signAt(number, distance));
      for (const int channel : {red, green, blue})
        image->rgba.push_back(static_cast<std::uint8_t>(mix(channel, 255, light)));
      image->rgba.push_back(255);
    }
  return image;
}

std::shared_ptr<UIWindow> makeHomeScreen(CGSize size, UIUserInterfaceStyle style) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, size});
  addWallpaper(*window, style);
  addIcons(*window);
  addDock(*window, style);
  window->makeKeyAndVisible();
  return window;
}

}  // namespace sentrel::programs
