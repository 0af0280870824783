#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Applications.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

class SBFolder;
class SBFolderIcon;
class SBIcon;

using SBIcons = std::vector<std::shared_ptr<SBIcon>>;

/// The class name of the folder that is the home screen itself.
inline constexpr std::string_view rootFolderClassName = "SBRootFolderWithDock";

/// What an icon hangs on: one page of a folder, or a place outside every folder.
class SENTREL_API SBIconParent {
 public:
  virtual ~SBIconParent() = default;

  /// Null outside every folder.
  virtual std::shared_ptr<SBFolder> folder() const = 0;
};

class SENTREL_API SBIcon : public DisplayItem {
 public:
  /// The bundle identifier of what the icon opens; none for a folder's icon.
  virtual std::optional<std::string> leafIdentifier() const = 0;

  /// May be missing, and may answer null.
  std::function<std::shared_ptr<SBIconParent>()> parent;
};

/// A live folder. Its identity means nothing beyond the object's life.
class SENTREL_API SBFolder {
 public:
  virtual ~SBFolder() = default;

  virtual const std::string& className() const = 0;
  virtual std::optional<std::string> displayName() const = 0;

  // Operations that a folder may not answer.
  /// Every icon, in order.
  std::function<SBIcons()> allIcons;
  /// Those of its icons that stand for folders, in order.
  std::function<std::vector<std::shared_ptr<SBFolderIcon>>()> folderIcons;
};

/// The icon of a folder.
class SENTREL_API SBFolderIcon : public SBIcon {
 public:
  virtual std::shared_ptr<SBFolder> folder() const = 0;
};

/// The keeper of the home screen's icons.
class SENTREL_API SBIconController {
 public:
  virtual ~SBIconController() = default;

  // Operations that the controller, or the object on the way to the answer, may not answer. All
  // may answer null.
  /// The icon model's expected icon for an identifier.
  std::function<std::shared_ptr<SBIcon>(const std::string& identifier)>
      expectedIconForDisplayIdentifier;
  /// The folder that the root folder controller shows.
  std::function<std::shared_ptr<SBFolder>()> rootFolder;
};

}  // namespace sentrel
