#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "device/storage/DeviceRoot.h"
#include "sentrel/platform/PropertyListFiles.h"

namespace sentrel::simulated {

/// Fills a simulated device from the files of a device root: what it is, which applications are
/// installed, how its home screen is laid out, which networks it knows. docs/device-root.md names
/// the files.
///
/// What is missing leaves the device as it was; what is damaged is left out, with a complaint.
class DeviceRootReader {
 public:
  explicit DeviceRootReader(storage::DeviceRoot root);

  void fill(SimulatedDevice& device);

  /// The main bundle of an installed application, or of the home screen, with its texts in the
  /// device's language. One that is not installed has its identifier and no translations.
  std::shared_ptr<SimulatedMainBundle> mainBundle(const std::string& bundleIdentifier);

  /// One line for each thing that could not be used.
  const std::vector<std::string>& complaints() const noexcept { return complaints_; }

 private:
  struct Bundle {
    std::string folder;
    PropertyList::Dictionary info;
    bool isSystem;
  };

  std::vector<Bundle> findBundles();
  void findBundlesIn(const std::string& folder, bool isSystem, std::vector<Bundle>& bundles);
  std::optional<PropertyList::Dictionary> read(const std::string& path);
  std::string language();
  std::optional<std::string> displayName(const Bundle& bundle);
  PropertyList::Dictionary texts(const std::string& bundleFolder, const std::string& table);

  void fillSystem(SimulatedDevice& device);
  void fillState(SimulatedDevice& device);
  void fillApplications(SimulatedDevice& device);
  void fillHomeScreen(SimulatedDevice& device);
  void place(SimulatedHomeScreen& homeScreen, const PropertyList& item);
  void fillNetworks(SimulatedDevice& device);

  storage::DeviceRoot root_;
  std::unique_ptr<PropertyListFiles> files_;
  std::vector<std::string> complaints_;
};

}  // namespace sentrel::simulated
