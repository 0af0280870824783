#include "programs/sim/Phone.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "device/screen/PangoTextMeasuring.h"
#include "device/screen/Png.h"
#include "device/storage/PlistFiles.h"
#include "host/BiometricEventRelay.h"
#include "host/SpringBoardObservers.h"
#include "host/SpringBoardResponder.h"
#include "programs/common/HomeScreen.h"
#include "programs/common/WatchAnswering.h"
#include "programs/sim/Screens.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sim {
namespace {

void goAway(PhoneProcess& process) {
  process.post(UIApplicationWillResignActiveNotification);
  process.post(UIApplicationDidEnterBackgroundNotification);
}

void comeBack(PhoneProcess& process) {
  process.post(UIApplicationWillEnterForegroundNotification);
  process.post(UIApplicationDidBecomeActiveNotification);
}

constexpr const char* extensionsFolder = "/Library/MobileSubstrate/DynamicLibraries";

}  // namespace

/// Who has the sensor when nobody borrows it.
class Phone::SystemObserver final : public BiometricObserver {
 public:
  std::string description() const override { return "<SystemObserver>"; }
};

Phone::Phone(const std::string& root)
    : reader_(storage::DeviceRoot(root)),
      fonts_(std::make_shared<screen::PinnedFonts>()),
      textMeasuring_(std::make_shared<screen::PangoTextMeasuring>(fonts_)),
      systemObserver_(std::make_shared<SystemObserver>()) {
  passcodeOptions_.note = [this](std::string line) { device_.journal().record(std::move(line)); };
  device_.sensor().keepsOwnerWaiting = true;
  reader_.fill(device_);
  fillFiles(root);
  restart();
}

Phone::~Phone() {
  endProcesses();
}

void Phone::fillFiles(const std::string& root) {
  const storage::DeviceRoot deviceRoot(root);
  const std::string settingsFile(settingsFilePath);
  device_.files().put(settingsFile, storage::PlistFiles(deviceRoot)
                                        .readDictionary(settingsFile)
                                        .dictionary.value_or(PropertyList::Dictionary()));
  std::error_code missing;
  const std::filesystem::directory_iterator extensions(
      deviceRoot.hostPath(extensionsFolder).value_or(""), missing);
  for (const auto& file : extensions)
    device_.files().touch(std::string(extensionsFolder) + "/" + file.path().filename().string());
}

// --- Processes -----------------------------------------------------------------------------------

std::unique_ptr<PhoneProcess> Phone::start(
    const std::string& bundleIdentifier,
    const std::function<std::shared_ptr<UIWindow>()>& content) {
  return std::make_unique<PhoneProcess>(device_, reader_.mainBundle(bundleIdentifier),
                                        textMeasuring_, content);
}

void Phone::startHomeScreen() {
  homeScreen_ = start(std::string(springBoardBundleIdentifier), [this] {
    return programs::makeHomeScreen(
        device_.screen().bounds().size,
        device_.screen().userInterfaceStyle().value_or(UIUserInterfaceStyle::light),
        programs::itemsOf(device_, screen::readPng));
  });
  // Applications have the home screen take the sensor in this one's name.
  homeScreen_->run([] { SNTouchIDManager::sharedManager(); });
  homeScreen_->add<host::SpringBoardObservers>();
  homeScreen_->add<host::BiometricEventRelay>();
  device_.messages().setResponder(
      std::string(messageChannelName), homeScreen_->process().weakProcess(),
      host::SpringBoardResponder([this](const std::string& line) { logLines_.push_back(line); }));
  lendSensorToSystem();
}

void Phone::startSharingDaemon() {
  sharingDaemon_ = device_.launch(std::string(sharingDaemonBundleIdentifier));
  device_.xpc().serve(std::string(sharingDaemonServiceName), sharingDaemon_->weakProcess(),
                      programs::watchResponder(device_));
}

void Phone::lendSensorToSystem() {
  homeScreen_->run([this] {
    const Platform& platform = homeScreen_->process().process().platform();
    if (platform.biometricResource)
      if (const auto interface = platform.biometricResource->_biometricKitInterface())
        interface->setDelegate(systemObserver_);
    if (platform.biometricEventMonitor)
      platform.biometricEventMonitor->addObserver(systemObserver_);
  });
}

void Phone::endProcesses() {
  applications_.clear();
  homeScreen_.reset();
  sharingDaemon_.reset();
}

void Phone::restart() {
  endProcesses();
  device_.applications().setFront(std::nullopt);
  startSharingDaemon();
  startHomeScreen();
}

PhoneProcess* Phone::application(const std::string& bundleIdentifier) {
  const auto found = std::ranges::find_if(applications_, [&](const auto& application) {
    return application->identifier() == bundleIdentifier;
  });
  return found == applications_.end() ? nullptr : found->get();
}

PhoneProcess* Phone::front() {
  const auto& identifier = device_.applications().front();
  return identifier ? application(*identifier) : nullptr;
}

std::vector<PhoneProcess*> Phone::visibleProcesses() {
  std::vector<PhoneProcess*> visible{homeScreen_.get()};
  if (PhoneProcess* application = front()) visible.push_back(application);
  return visible;
}

void Phone::open(const std::string& bundleIdentifier) {
  if (!application(bundleIdentifier))
    applications_.push_back(start(bundleIdentifier, [&] {
      return makeApplicationScreen(
          device_.screen().bounds().size,
          device_.applications().find(bundleIdentifier)->displayName.value_or(bundleIdentifier));
    }));
  bringToFront(bundleIdentifier);
}

void Phone::goHome() {
  bringToFront(std::nullopt);
}

PhoneProcess& Phone::current() {
  PhoneProcess* application = front();
  return application ? *application : *homeScreen_;
}

/// Who leaves and who comes hears of it.
void Phone::bringToFront(const std::optional<std::string>& bundleIdentifier) {
  PhoneProcess* former = front();
  device_.applications().setFront(bundleIdentifier);
  PhoneProcess* present = front();
  if (former == present) return;
  if (former) goAway(*former);
  if (present) comeBack(*present);
}

void Phone::turn(UIInterfaceOrientation orientation) {
  CGSize size = device_.screen().bounds().size;
  const bool isLandscape = orientation == UIInterfaceOrientation::landscapeLeft ||
                           orientation == UIInterfaceOrientation::landscapeRight;
  if (isLandscape != (size.width > size.height)) std::swap(size.width, size.height);
  device_.screen().setBounds({{}, size});
  homeScreen_->turn(orientation, size);
  for (const auto& application : applications_)
    application->turn(orientation, size);
}

void Phone::quit(const std::string& bundleIdentifier) {
  if (device_.applications().front() == bundleIdentifier) goHome();
  const auto ended = std::erase_if(applications_, [&](const auto& application) {
    return application->identifier() == bundleIdentifier;
  });
  // It may have had the home screen take the sensor, and cannot have it given back any more.
  if (ended > 0)
    homeScreen_->run([] {
      if (!SNTouchIDManager::sharedManager()->isRunning()) SNUtils::resetBioMetricsResourceCache();
    });
}

// --- Requests ------------------------------------------------------------------------------------

std::function<void(bool, bool)> Phone::request(std::string what, std::function<void()> onAllowed) {
  Request& request = requests_.emplace_back(Request{std::move(what), {}});
  return [this, &request, onAllowed = std::move(onAllowed)](bool authenticated, bool allowed) {
    request.outcomes.push_back({authenticated, allowed});
    if (allowed && onAllowed) deferred_.push_back(onAllowed);
  };
}

void Phone::runDeferred() {
  for (const auto& action : std::exchange(deferred_, {}))
    action();
}

// --- Time ----------------------------------------------------------------------------------------

void Phone::pass(Seconds time) {
  const SteadyTime end = device_.time().steadyNow() + time;
  do {
    runDeferred();
    noticeLock();
    if (onMoment_) onMoment_();
  } while (device_.time().runNextMoment(end));
  device_.time().advance(end - device_.time().steadyNow());
}

/// The home screen is told at once; applications hear of it when it has reacted.
void Phone::tellAll(void (*tell)()) {
  homeScreen_->run(tell);
  for (const auto& application : applications_)
    application->run([tell] { Process::current().platform().mainQueue->async(tell); });
}

void Phone::noticeLock() {
  const bool isLocked = device_.lock().isLocked();
  if (isLocked && !knowsOfLock_)
    tellAll([] { SentrelController::sharedInstance().deviceLocked(); });
  knowsOfLock_ = isLocked;
}

void Phone::lock() {
  if (PhoneProcess* application = front(); application && !device_.lock().isLocked())
    goAway(*application);
  device_.lock().setLocked(/*value=*/true);
  noticeLock();
}

void Phone::unlock() {
  if (PhoneProcess* application = front(); application && device_.lock().isLocked())
    comeBack(*application);
  device_.lock().setLocked(/*value=*/false);
  homeScreen_->run([] { SNUtils::setLockscreenAsDimmed(/*value=*/false); });
}

void Phone::dim() {
  homeScreen_->run([] { SNUtils::setLockscreenAsDimmed(/*value=*/true); });
  tellAll([] { SentrelController::sharedInstance().deviceScreenDimmed(); });
}

Mark Phone::everything() {
  return {device_.darwin().posted().size(), logLines_.size(),
          device_.audioServices().played().size(), device_.watch().taps().size(),
          device_.journal().lines().size()};
}

bool Phone::isSensorHeld() {
  bool isHeld = device_.sensor().isHeld();
  const auto look = [&isHeld] {
    isHeld = isHeld || SNTouchIDManager::sharedManager()->isRunning();
  };
  homeScreen_->run(look);
  for (const auto& application : applications_)
    application->run(look);
  const Platform& platform = homeScreen_->process().process().platform();
  if (platform.biometricResource)
    return isHeld ||
           platform.biometricResource->_biometricKitInterface()->delegate() != systemObserver_;
  return isHeld || platform.biometricEventMonitor->observers() !=
                       std::vector<std::shared_ptr<BiometricObserver>>{systemObserver_};
}

}  // namespace sentrel::sim
