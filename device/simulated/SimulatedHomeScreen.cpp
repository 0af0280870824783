#include "device/simulated/SimulatedHomeScreen.h"

#include <algorithm>
#include <utility>

namespace sentrel::simulated {
namespace {

class Page final : public SBIconParent {
 public:
  explicit Page(std::weak_ptr<SBFolder> folder) : folder_(std::move(folder)) {}
  std::shared_ptr<SBFolder> folder() const override { return folder_.lock(); }

 private:
  std::weak_ptr<SBFolder> folder_;
};

class LeafIcon final : public SBIcon {
 public:
  explicit LeafIcon(std::optional<std::string> identifier) : identifier_(std::move(identifier)) {}
  std::optional<std::string> leafIdentifier() const override { return identifier_; }

 private:
  std::optional<std::string> identifier_;
};

class FolderIcon final : public SBFolderIcon {
 public:
  explicit FolderIcon(std::shared_ptr<SimulatedFolder> folder) : folder_(std::move(folder)) {
    displayName = [shown = std::weak_ptr(folder_)] {
      const auto alive = shown.lock();
      return alive ? alive->displayName() : std::nullopt;
    };
  }
  std::optional<std::string> leafIdentifier() const override { return std::nullopt; }
  std::shared_ptr<SBFolder> folder() const override { return folder_; }

 private:
  std::shared_ptr<SimulatedFolder> folder_;
};

std::shared_ptr<SBIcon> iconIn(const SimulatedFolder& folder, const std::string& identifier) {
  const auto found = std::ranges::find_if(folder.icons(), [&identifier](const auto& icon) {
    return icon->leafIdentifier() == identifier;
  });
  return found == folder.icons().end() ? nullptr : *found;
}

}  // namespace

SimulatedFolder::SimulatedFolder(std::string className, std::optional<std::string> displayName)
    : className_(std::move(className)), displayName_(std::move(displayName)) {
  allIcons = [this] { return icons_; };
  folderIcons = [this] {
    std::vector<std::shared_ptr<SBFolderIcon>> found;
    for (const auto& icon : icons_)
      if (auto folderIcon = std::dynamic_pointer_cast<SBFolderIcon>(icon))
        found.push_back(std::move(folderIcon));
    return found;
  };
}

void SimulatedFolder::add(std::shared_ptr<SBIcon> icon) {
  icon->parent = [page = std::make_shared<Page>(weak_from_this())] { return page; };
  icons_.push_back(std::move(icon));
}

std::shared_ptr<SBIcon> makeIcon(std::optional<std::string> leafIdentifier,
                                 std::optional<std::string> name) {
  auto icon = std::make_shared<LeafIcon>(std::move(leafIdentifier));
  icon->displayName = [name = std::move(name)] { return name; };
  return icon;
}

SimulatedHomeScreen::SimulatedHomeScreen(SharedApplications applications)
    : applications_(std::move(applications)) {
  clear();
}

void SimulatedHomeScreen::clear() {
  folders_.clear();
  dockCount_ = 0;
  root_ = std::make_shared<SimulatedFolder>(std::string(rootFolderClassName), std::nullopt);
}

std::shared_ptr<SBIcon> SimulatedHomeScreen::iconOf(const std::string& bundleIdentifier) const {
  const InstalledApplication* installed = applications_->find(bundleIdentifier);
  auto icon = makeIcon(bundleIdentifier, installed ? installed->displayName : std::nullopt);
  icon->application = [applications = applications_, bundleIdentifier] {
    return applicationObject(applications, bundleIdentifier);
  };
  return icon;
}

void SimulatedHomeScreen::addApplication(const std::string& bundleIdentifier) {
  root_->add(iconOf(bundleIdentifier));
}

std::shared_ptr<SimulatedFolder> SimulatedHomeScreen::addFolder(
    std::optional<std::string> name, const std::vector<std::string>& bundleIdentifiers) {
  auto folder = std::make_shared<SimulatedFolder>("SBFolder", std::move(name));
  for (const std::string& identifier : bundleIdentifiers)
    folder->add(iconOf(identifier));
  root_->add(std::make_shared<FolderIcon>(folder));
  folders_.push_back(folder);
  return folder;
}

std::shared_ptr<SBIcon> SimulatedHomeScreen::icon(const std::string& bundleIdentifier) const {
  if (auto icon = iconIn(*root_, bundleIdentifier)) return icon;
  for (const auto& folder : folders_)
    if (auto icon = iconIn(*folder, bundleIdentifier)) return icon;
  return nullptr;
}

std::shared_ptr<SBIconController> makeIconController(
    const std::shared_ptr<SimulatedHomeScreen>& homeScreen) {
  auto controller = std::make_shared<SBIconController>();
  controller->expectedIconForDisplayIdentifier = [homeScreen](const std::string& identifier) {
    return homeScreen->icon(identifier);
  };
  controller->rootFolder = [homeScreen] { return homeScreen->root_; };
  return controller;
}

}  // namespace sentrel::simulated
