#pragma once

#include <optional>
#include <string>
#include <vector>

#include "device/simulated/RootPropertyLists.h"
#include "device/simulated/SimulatedApplications.h"

namespace sentrel::simulated {

/// The application bundles under a device root, found once, when this is made, and their texts in
/// the device's language.
class RootBundles {
 public:
  /// `files` has to outlive it.
  explicit RootBundles(RootPropertyLists& files);

  struct Bundle {
    std::string folder;
    InstalledApplication application;
  };

  /// No two of them have the same identifier.
  const std::vector<Bundle>& all() const noexcept { return bundles_; }

  /// A table of texts of that application, or of the home screen; empty where there is none.
  PropertyList::Dictionary texts(const std::string& bundleIdentifier, const std::string& table);

 private:
  std::string readLanguage();
  void findIn(const std::string& folder, bool isSystem);
  void add(const std::string& folder, bool isSystem);
  std::optional<std::string> folderOf(const std::string& bundleIdentifier) const;
  std::optional<std::string> localization(const std::string& folder) const;
  PropertyList::Dictionary textsIn(const std::string& folder, const std::string& table);
  std::optional<std::string> displayName(const std::string& folder,
                                         const PropertyList::Dictionary& info);
  std::optional<std::string> iconFile(const std::string& folder,
                                      const PropertyList::Dictionary& info);

  RootPropertyLists& files_;
  std::string language_;
  std::vector<Bundle> bundles_;
};

}  // namespace sentrel::simulated
