#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/SimulatedApplications.h"
#include "sentrel/platform/HomeScreen.h"

namespace sentrel::simulated {

/// A live folder whose contents a test sets. Its icons know it as their parent's folder.
class SimulatedFolder final : public SBFolder,
                              public std::enable_shared_from_this<SimulatedFolder> {
 public:
  SimulatedFolder(std::string className, std::optional<std::string> displayName);

  const std::string& className() const override { return className_; }
  std::optional<std::string> displayName() const override { return displayName_; }

  void setClassName(std::string className) { className_ = std::move(className); }
  void setDisplayName(std::optional<std::string> name) { displayName_ = std::move(name); }

  /// Puts `icon` behind the others.
  void add(std::shared_ptr<SBIcon> icon);
  const SBIcons& icons() const noexcept { return icons_; }

 private:
  std::string className_;
  std::optional<std::string> displayName_;
  SBIcons icons_;
};

/// The icon of something with an identifier; `name` is what it shows.
std::shared_ptr<SBIcon> makeIcon(std::optional<std::string> leafIdentifier,
                                 std::optional<std::string> name);

/// The icons of a device: those on the home screen itself and those in its folders. Icons show the
/// names that their applications have when they are put there.
class SimulatedHomeScreen {
 public:
  explicit SimulatedHomeScreen(SharedApplications applications);

  void addApplication(const std::string& bundleIdentifier);
  std::shared_ptr<SimulatedFolder> addFolder(std::optional<std::string> name,
                                             const std::vector<std::string>& bundleIdentifiers);

  SimulatedFolder& root() noexcept { return *root_; }

  /// How many of the root's icons, from the first on, are in the dock.
  std::size_t dockCount() const noexcept { return dockCount_; }
  void setDockCount(std::size_t count) noexcept { dockCount_ = count; }

  const std::vector<std::shared_ptr<SimulatedFolder>>& folders() const noexcept { return folders_; }

  /// The icon of an application wherever it lies, or null.
  std::shared_ptr<SBIcon> icon(const std::string& bundleIdentifier) const;

  /// Takes every icon away.
  void clear();

 private:
  friend std::shared_ptr<SBIconController> makeIconController(
      const std::shared_ptr<SimulatedHomeScreen>& homeScreen);

  std::shared_ptr<SBIcon> iconOf(const std::string& bundleIdentifier) const;

  SharedApplications applications_;
  std::shared_ptr<SimulatedFolder> root_;
  std::vector<std::shared_ptr<SimulatedFolder>> folders_;
  std::size_t dockCount_ = 0;
};

std::shared_ptr<SBIconController> makeIconController(
    const std::shared_ptr<SimulatedHomeScreen>& homeScreen);

}  // namespace sentrel::simulated
