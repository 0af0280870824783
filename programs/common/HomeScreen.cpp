#include "programs/common/HomeScreen.h"

#include <algorithm>
#include <cmath>

#include "sentrel/uikit/UIImageView.h"
#include "sentrel/uikit/UILabel.h"
#include "sentrel/uikit/UIVisualEffectView.h"

namespace sentrel::programs {
namespace {

constexpr double iconSide = 60;
constexpr double iconRadius = 13.5;
constexpr std::size_t columns = 4;

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

std::shared_ptr<UIImageView> makeImageView(const CGRect& frame, double radius,
                                           std::shared_ptr<const UIImage> image) {
  auto view = std::make_shared<UIImageView>(frame);
  view->setImage(std::move(image));
  view->layer().setCornerRadius(radius);
  view->setClipsToBounds(/*value=*/true);
  return view;
}

/// A small picture of up to nine of the applications in a folder.
std::shared_ptr<UIView> makeFolder(const CGRect& frame, const HomeScreenItem& folder) {
  constexpr std::size_t across = 3;
  constexpr double side = 14;
  constexpr double step = 17;
  auto view = std::make_shared<UIView>(frame);
  view->setBackgroundColor(UIColor::colorWithWhite(1, 0.3));
  view->layer().setCornerRadius(iconRadius);
  for (std::size_t i = 0; i < std::min(folder.images.size(), across * across); ++i)
    view->addSubview(
        makeImageView(CGRectMake(6 + step * static_cast<double>(i % across),
                                 6 + step * static_cast<double>(i / across), side, side),
                      3, folder.images[i]));
  return view;
}

std::shared_ptr<UIView> makeIcon(CGPoint origin, const HomeScreenItem& item) {
  const CGRect frame{origin, {iconSide, iconSide}};
  if (item.isFolder) return makeFolder(frame, item);
  return makeImageView(frame, iconRadius, item.images.front());
}

std::shared_ptr<UILabel> makeName(const CGRect& iconFrame, const std::string& name) {
  auto label = std::make_shared<UILabel>(
      CGRectMake(iconFrame.origin.x - 8, iconFrame.maxY() + 4, iconSide + 16, 15));
  label->setText(name);
  label->setFont(UIFont::systemFontOfSize(11.5));
  label->setTextColor(UIColor::whiteColor());
  label->setTextAlignment(NSTextAlignment::center);
  return label;
}

/// Where the icon in that column and row stands.
CGPoint iconOrigin(CGSize screen, std::size_t column, double top) {
  const double gap = (screen.width - columns * iconSide) / (columns + 1);
  return {gap + static_cast<double>(column) * (iconSide + gap), top};
}

void addPage(UIView& window, const std::vector<HomeScreenItem>& items) {
  const CGSize screen = window.bounds().size;
  const double rowHeight = screen.height > 900 ? 130 : 88;
  const double rows = std::clamp(std::floor((screen.height - 160) / rowHeight), 0.0, 6.0);
  const auto places = static_cast<std::size_t>(rows) * columns;
  for (std::size_t i = 0; i < std::min(places, items.size()); ++i) {
    const double top = 36 + static_cast<double>(i / columns) * rowHeight;
    const auto icon = makeIcon(iconOrigin(screen, i % columns, top), items[i]);
    window.addSubview(icon);
    window.addSubview(makeName(icon->frame(), items[i].name));
  }
}

void addDock(UIView& window, UIUserInterfaceStyle style, const std::vector<HomeScreenItem>& items) {
  constexpr double height = 92;
  const CGSize screen = window.bounds().size;
  const auto dock = std::make_shared<UIVisualEffectView>(
      UIBlurEffect::effectWithStyle(style == UIUserInterfaceStyle::dark ? 2 : 1),
      CGRectMake(0, screen.height - height, screen.width, height));
  dock->setAlpha(0.9);
  window.addSubview(dock);
  for (std::size_t i = 0; i < std::min<std::size_t>(columns, items.size()); ++i)
    window.addSubview(makeIcon(iconOrigin(screen, i, screen.height - height + 16), items[i]));
}

}  // namespace

std::shared_ptr<UIWindow> makeHomeScreen(CGSize size, UIUserInterfaceStyle style,
                                         const HomeScreenItems& items) {
  auto window = std::make_shared<UIWindow>(CGRect{{}, size});
  addWallpaper(*window, style);
  addPage(*window, items.page);
  addDock(*window, style, items.dock);
  window->makeKeyAndVisible();
  return window;
}

}  // namespace sentrel::programs
