#pragma once

#include <memory>
#include <string>
#include <vector>

#include "device/simulated/RootBundles.h"
#include "device/simulated/RootPropertyLists.h"
#include "device/simulated/SimulatedDevice.h"
#include "device/storage/DeviceRoot.h"

namespace sentrel::simulated {

/// Fills a simulated device from the files of a device root: what it is, which applications are
/// installed, how its home screen is laid out, which networks it knows. docs/device-root.md names
/// the files.
///
/// What is missing leaves the device as it was; what is damaged is left out, with a complaint.
/// Which applications there are, and the language, are read once, when this is made.
class DeviceRootReader {
 public:
  explicit DeviceRootReader(storage::DeviceRoot root);
  DeviceRootReader(const DeviceRootReader&) = delete;
  DeviceRootReader& operator=(const DeviceRootReader&) = delete;

  void fill(SimulatedDevice& device);

  /// The main bundle of an installed application, or of the home screen, with its texts in the
  /// device's language. One that is not installed has its identifier and no translations.
  std::shared_ptr<SimulatedMainBundle> mainBundle(const std::string& bundleIdentifier);

  /// Whether all that is there was read, be it of use or not. A device of which parts are missing
  /// for want of a descriptor or memory, or because the disk fails, is not the one under the root.
  bool isComplete() const noexcept { return files_.isComplete(); }

  /// One line for each thing that could not be used.
  const std::vector<std::string>& complaints() const noexcept { return files_.complaints(); }

 private:
  void fillSystem(SimulatedDevice& device);
  void fillState(SimulatedDevice& device);
  void fillNetworks(SimulatedDevice& device);

  RootPropertyLists files_;
  RootBundles bundles_;
};

}  // namespace sentrel::simulated
