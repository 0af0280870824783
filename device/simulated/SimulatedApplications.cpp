#include "device/simulated/SimulatedApplications.h"

#include <algorithm>

namespace sentrel::simulated {
namespace {

class ApplicationObject final : public SBApplication {
 public:
  explicit ApplicationObject(const InstalledApplication& installed)
      : bundleIdentifier_(installed.bundleIdentifier), isSystem_(installed.isSystem) {
    displayName = [name = installed.displayName] { return name; };
  }

  const std::string& bundleIdentifier() const override { return bundleIdentifier_; }
  bool isSystemApplication() const override { return isSystem_; }

 private:
  std::string bundleIdentifier_;
  bool isSystem_;
};

class BackBoard final : public BackBoardServices {
 public:
  explicit BackBoard(SharedApplications applications) : applications_(std::move(applications)) {}

  void terminateApplication(const std::string& bundleIdentifier, int reason, bool report) override {
    applications_->leaveFront("terminate " + bundleIdentifier + " for reason " +
                              std::to_string(reason) + (report ? ", reported" : ", not reported"));
  }

 private:
  SharedApplications applications_;
};

class OpenApplicationService final : public FBSOpenApplicationService {
 public:
  explicit OpenApplicationService(SharedApplications applications)
      : applications_(std::move(applications)) {}

  void openApplication(const std::string& bundleIdentifier,
                       const PropertyList::Dictionary& options) override {
    applications_->note("open " + bundleIdentifier + " with " + std::to_string(options.size()) +
                        " options");
    if (applications_->find(bundleIdentifier)) applications_->setFront(bundleIdentifier);
  }

 private:
  SharedApplications applications_;
};

class MakersUtils final : public QVUtils {
 public:
  MakersUtils(SharedApplications applications, std::shared_ptr<const SystemState> system)
      : applications_(std::move(applications)), system_(std::move(system)) {}

  bool isHiddenApp(const std::string& bundleIdentifier) const override {
    const InstalledApplication* application = applications_->find(bundleIdentifier);
    return application && application->isHidden;
  }
  bool canUseAlertView() const override { return system_->canUseAlertView; }
  std::string platform() const override { return system_->model; }

 private:
  SharedApplications applications_;
  std::shared_ptr<const SystemState> system_;
};

}  // namespace

void SimulatedApplications::install(InstalledApplication application) {
  installed_.push_back(std::move(application));
}

const InstalledApplication* SimulatedApplications::find(const std::string& bundleIdentifier) const {
  const auto found =
      std::ranges::find(installed_, bundleIdentifier, &InstalledApplication::bundleIdentifier);
  return found == installed_.end() ? nullptr : &*found;
}

void SimulatedApplications::leaveFront(std::string action) {
  note(std::move(action));
  front_.reset();
}

std::shared_ptr<SBApplication> applicationObject(const SharedApplications& applications,
                                                 const std::string& bundleIdentifier) {
  const InstalledApplication* installed = applications->find(bundleIdentifier);
  return installed ? std::make_shared<ApplicationObject>(*installed) : nullptr;
}

std::shared_ptr<SBApplicationController> makeApplicationController(
    const SharedApplications& applications) {
  auto controller = std::make_shared<SBApplicationController>();
  controller->applicationWithBundleIdentifier = [applications](const std::string& identifier) {
    return applicationObject(applications, identifier);
  };
  controller->suspendApplicationWithBundleIdentifier =
      [applications](const std::string& identifier) {
        applications->leaveFront("suspend " + identifier);
      };
  return controller;
}

std::shared_ptr<SpringBoardApplication> makeSpringBoardApplication(
    const SharedApplications& applications, const std::shared_ptr<const SystemState>& system) {
  auto springBoard = std::make_shared<SpringBoardApplication>();
  springBoard->_accessibilityFrontMostApplication = [applications] {
    const auto& front = applications->front();
    return front ? applicationObject(applications, *front) : nullptr;
  };
  springBoard->_simulateHomeButtonPress = [applications] {
    applications->leaveFront("press the home button");
  };
  springBoard->launchApplicationWithIdentifier = [applications](const std::string& identifier,
                                                                bool suspended) {
    applications->note("launch " + identifier + (suspended ? " suspended" : ""));
    if (!suspended) applications->setFront(identifier);
  };
  springBoard->connectedScenes = [system] { return system->connectedScenes; };
  return springBoard;
}

std::shared_ptr<BackBoardServices> makeBackBoardServices(const SharedApplications& applications) {
  return std::make_shared<BackBoard>(applications);
}

std::shared_ptr<FBSOpenApplicationService> makeOpenApplicationService(
    const SharedApplications& applications) {
  return std::make_shared<OpenApplicationService>(applications);
}

std::shared_ptr<QVUtils> makeQVUtils(const SharedApplications& applications,
                                     const std::shared_ptr<const SystemState>& system) {
  return std::make_shared<MakersUtils>(applications, system);
}

}  // namespace sentrel::simulated
