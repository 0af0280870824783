#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/uikit/UIImage.h"

namespace sentrel::programs {

/// What stands in one place of a home screen: an application, or a folder of applications.
struct HomeScreenItem {
  std::string name;
  /// The application's icon, or those of what is in the folder.
  std::vector<std::shared_ptr<const UIImage>> images;
  bool isFolder = false;
};

/// Row by row; all pages are one.
struct HomeScreenItems {
  std::vector<HomeScreenItem> page;
  std::vector<HomeScreenItem> dock;
};

/// The picture in a file of this machine; null where there is none that can be read.
using PictureReader = std::function<std::shared_ptr<const UIImage>(const std::string& path)>;

/// Something to look at, for a device without applications.
HomeScreenItems inventedItems();

/// What `device` has: its layout, behind which stands whatever else is installed and not hidden. An
/// application without a picture of its own has one of those below.
HomeScreenItems itemsOf(simulated::SimulatedDevice& device, const PictureReader& read);

/// An icon without a name, the `number`-th of a few that repeat.
std::shared_ptr<const UIImage> makeIconImage(int number);

}  // namespace sentrel::programs
