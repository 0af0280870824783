#include "programs/common/HomeScreenItems.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <set>

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

constexpr int imageSide = 120;

double mix(double from, double to, double part) {
  return from + (to - from) * part;
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

/// An application's own icon, or one that it is known by: the same on every screen.
std::shared_ptr<const UIImage> imageOf(const simulated::InstalledApplication& application,
                                       const PictureReader& read) {
  const auto own = application.iconFile ? read(*application.iconFile) : nullptr;
  if (own) return own;
  const std::string& identifier = application.bundleIdentifier;
  return makeIconImage(std::accumulate(identifier.begin(), identifier.end(), 0));
}

HomeScreenItem itemOf(const simulated::InstalledApplication& application,
                      const PictureReader& read) {
  return {application.displayName.value_or(application.bundleIdentifier),
          {imageOf(application, read)}};
}

/// Goes over the icons of a device's home screen.
class ItemsOfDevice {
 public:
  ItemsOfDevice(simulated::SimulatedDevice& device, const PictureReader& read)
      : applications_(device.applications()), read_(read) {
    const SBIcons& placed = device.homeScreen().root().icons();
    for (std::size_t i = 0; i < placed.size(); ++i)
      add(i < device.homeScreen().dockCount() ? items_.dock : items_.page, *placed[i]);
    for (const auto& application : applications_.all())
      if (!application.isHidden && !placed_.contains(application.bundleIdentifier))
        items_.page.push_back(itemOf(application, read_));
  }

  HomeScreenItems take() { return std::move(items_); }

 private:
  /// What is no longer installed shows no icon.
  const simulated::InstalledApplication* place(const SBIcon& icon) {
    const auto identifier = icon.leafIdentifier();
    if (identifier) placed_.insert(*identifier);
    return identifier ? applications_.find(*identifier) : nullptr;
  }

  void add(std::vector<HomeScreenItem>& items, const SBIcon& icon) {
    if (const auto* folderIcon = dynamic_cast<const SBFolderIcon*>(&icon))
      items.push_back(folderItem(*folderIcon->folder()));
    else if (const auto* application = place(icon))
      items.push_back(itemOf(*application, read_));
  }

  HomeScreenItem folderItem(const SBFolder& folder) {
    HomeScreenItem item{folder.displayName().value_or(""), {}, /*isFolder=*/true};
    for (const auto& icon : folder.allIcons())
      if (const auto* application = place(*icon))
        item.images.push_back(imageOf(*application, read_));
    return item;
  }

  const simulated::SimulatedApplications& applications_;
  const PictureReader& read_;
  std::set<std::string> placed_;
  HomeScreenItems items_;
};

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

HomeScreenItems inventedItems() {
  HomeScreenItems items;
  for (int number = 0; number < 24; ++number)
    items.page.push_back(
        {icons[static_cast<std::size_t>(number) % icons.size()].name, {makeIconImage(number)}});
  for (const int number : {2, 5, 8, 11})
    items.dock.push_back({"", {makeIconImage(number)}});
  return items;
}

HomeScreenItems itemsOf(simulated::SimulatedDevice& device, const PictureReader& read) {
  return ItemsOfDevice(device, read).take();
}

}  // namespace sentrel::programs
