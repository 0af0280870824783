#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/simulated/Journal.h"
#include "device/simulated/SimulatedSystem.h"
#include "sentrel/platform/ApplicationServices.h"
#include "sentrel/platform/Applications.h"
#include "sentrel/platform/FSSwitchPanel.h"
#include "sentrel/platform/QVUtils.h"

namespace sentrel::simulated {

struct InstalledApplication {
  std::string bundleIdentifier;
  std::optional<std::string> displayName;
  bool isSystem = false;
  bool isHidden = false;
  /// A PNG file on this machine; none where there is no picture of the icon.
  std::optional<std::string> iconFile = {};
};

/// The applications of a device, and which of them is at the front.
class SimulatedApplications {
 public:
  explicit SimulatedApplications(std::shared_ptr<Journal> journal) : journal_(std::move(journal)) {}

  void install(InstalledApplication application);

  const std::vector<InstalledApplication>& all() const noexcept { return installed_; }

  /// Null when it is not installed.
  const InstalledApplication* find(const std::string& bundleIdentifier) const;

  /// None is the home screen.
  void setFront(std::optional<std::string> bundleIdentifier) {
    front_ = std::move(bundleIdentifier);
  }
  const std::optional<std::string>& front() const noexcept { return front_; }

  /// Notes `action`, after which the home screen is at the front.
  void leaveFront(std::string action);
  void note(std::string action) { journal_->record(std::move(action)); }

 private:
  std::shared_ptr<Journal> journal_;
  std::vector<InstalledApplication> installed_;
  std::optional<std::string> front_;
};

using SharedApplications = std::shared_ptr<SimulatedApplications>;

/// The live object for an installed application; null for any other.
std::shared_ptr<SBApplication> applicationObject(const SharedApplications& applications,
                                                 const std::string& bundleIdentifier);

std::shared_ptr<SBApplicationController> makeApplicationController(
    const SharedApplications& applications);

/// Without isLocked, which hangs on the lock.
std::shared_ptr<SpringBoardApplication> makeSpringBoardApplication(
    const SharedApplications& applications, const std::shared_ptr<const SystemState>& system);

std::shared_ptr<BackBoardServices> makeBackBoardServices(const SharedApplications& applications);
std::shared_ptr<FBSOpenApplicationService> makeOpenApplicationService(
    const SharedApplications& applications);
std::shared_ptr<QVUtils> makeQVUtils(const SharedApplications& applications,
                                     const std::shared_ptr<const SystemState>& system);

/// The switches of the control-centre toggle library.
class SimulatedSwitchPanel final : public FSSwitchPanel {
 public:
  void setTitle(std::string switchIdentifier, std::string title) {
    titles_.insert_or_assign(std::move(switchIdentifier), std::move(title));
  }

  std::optional<std::string> titleForSwitchIdentifier(
      const std::string& switchIdentifier) const override {
    const auto title = titles_.find(switchIdentifier);
    return title == titles_.end() ? std::nullopt : std::optional(title->second);
  }

 private:
  std::map<std::string, std::string> titles_;
};

}  // namespace sentrel::simulated
