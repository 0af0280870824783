#include "device/simulated/SimulatedDevice.h"

#include "device/simulated/FixedTextMeasuring.h"
#include "device/storage/GLibCaseMapping.h"
#include "device/storage/OpenSslCryptography.h"

namespace sentrel::simulated {
SimulatedDevice::SimulatedDevice()
    : timeline_(std::make_shared<VirtualTimeline>()),
      files_(std::make_shared<SimulatedFiles>()),
      darwin_(std::make_shared<NotificationHub>()),
      distributed_(std::make_shared<NotificationHub>()),
      messages_(std::make_shared<MessageHub>()),
      wifi_(std::make_shared<WiFiState>()),
      journal_(std::make_shared<Journal>()),
      watch_(std::make_shared<SimulatedWatch>(journal_)),
      xpc_(std::make_shared<XpcHub>(timeline_, watch_)),
      audioServices_(std::make_shared<SimulatedAudioServices>(journal_)),
      system_(std::make_shared<SystemState>()),
      screen_(std::make_shared<SimulatedScreen>(system_)),
      sensor_(std::make_shared<SimulatedSensor>(journal_)),
      lock_(std::make_shared<SimulatedLock>(journal_)),
      applications_(std::make_shared<SimulatedApplications>(journal_)),
      homeScreen_(std::make_shared<SimulatedHomeScreen>(applications_)),
      libraries_(std::make_shared<SimulatedLibraries>(journal_)),
      systemLog_(std::make_shared<SimulatedSystemLog>()),
      switchPanel_(std::make_shared<SimulatedSwitchPanel>()),
      notificationCenter_(std::make_shared<SimulatedNotificationCenterController>()),
      glyphViewClass_(std::make_shared<PKGlyphViewClass>()) {
  installGlyphBundle();
  installBiometricKitBundle();
}

void SimulatedDevice::installGlyphBundle() {
  libraries_->installBundle("/System/Library/PrivateFrameworks/PassKitUIFoundation.framework",
                            [glyphViewClass = glyphViewClass_] {
                              ProcessContext::current().platform().glyphViewClass =
                                  std::make_shared<const PKGlyphViewClass>(*glyphViewClass);
                            });
}

void SimulatedDevice::installBiometricKitBundle() {
  libraries_->installBundle("/System/Library/PrivateFrameworks/BiometricKit.framework",
                            [sensor = sensor_, system = system_] {
                              auto& manager = ProcessContext::current().platform().biometricKit;
                              if (!manager)
                                manager = makeApplicationBiometricKitManager(sensor,
                                                                             majorVersion(*system));
                            });
}

std::unique_ptr<SimulatedProcess> SimulatedDevice::launch(const std::string& bundleIdentifier) {
  return std::make_unique<SimulatedProcess>(*this, bundleIdentifier);
}

void SimulatedDevice::addCommonParts(Platform& platform) const {
  platform.clock = timeline_;
  platform.files = files_;
  platform.propertyListFiles = files_;
  platform.cryptography = std::make_shared<storage::OpenSslCryptography>();
  platform.caseMapping = std::make_shared<storage::GLibCaseMapping>();
  platform.system = std::make_shared<SimulatedSystemFacts>(system_);
  platform.systemLog = systemLog_;
  platform.libraries = libraries_;
  platform.spawner = std::make_shared<SimulatedSpawner>(journal_);
  platform.audioServices = audioServices_;
  platform.screen = screen_;
  platform.textMeasuring = std::make_shared<FixedTextMeasuring>();
  platform.qvUtils = makeQVUtils(applications_, system_);
}

void SimulatedDevice::addSpringBoardClasses(Platform& platform) const {
  platform.applicationController = makeApplicationController(applications_);
  platform.springBoard = makeSpringBoardApplication(applications_, system_);
  if (!hasScenes(*system_)) platform.springBoard->connectedScenes = nullptr;
  platform.springBoard->isLocked = [lock = lock_] { return lock->isLocked(); };
  platform.iconController = makeIconController(homeScreen_);
  platform.lockScreenManager = makeLockScreenManager(lock_);
  platform.passcodeManager = makePasscodeManager(lock_);
  platform.profileConnection = makeProfileConnection(lock_);
  platform.backBoard = makeBackBoardServices(applications_);
  platform.openApplicationService = makeOpenApplicationService(applications_);
  platform.switchPanel = switchPanel_;
  platform.notificationCenterController = notificationCenter_;
  addSensorClasses(platform, majorVersion(*system_));
}

void SimulatedDevice::addSharingDaemonClasses(Platform& platform) const {
  platform.pairedDeviceAgent = makePairedDeviceAgent(watch_);
  platform.statusMonitor = makeStatusMonitor(watch_);
}

void SimulatedDevice::addSensorClasses(Platform& platform, int version) const {
  if (version >= 10)
    platform.biometricResource = std::make_shared<SimulatedBiometricResource>(
        sensor_, makeBiometricInterface(sensor_, version));
  else
    platform.biometricEventMonitor = makeBiometricEventMonitor(sensor_);
  platform.biometricKit = makeBiometricKitManager(sensor_);
  platform.protectedConfiguration = makeProtectedConfiguration();
  platform.deviceManager = makeDeviceManager(sensor_);
}

}  // namespace sentrel::simulated
