#pragma once

#include <memory>
#include <string>

#include "device/simulated/Journal.h"
#include "device/simulated/SimulatedApplications.h"
#include "device/simulated/SimulatedAudioServices.h"
#include "device/simulated/SimulatedBiometrics.h"
#include "device/simulated/SimulatedFiles.h"
#include "device/simulated/SimulatedHomeScreen.h"
#include "device/simulated/SimulatedLock.h"
#include "device/simulated/SimulatedMessages.h"
#include "device/simulated/SimulatedNotificationCenterController.h"
#include "device/simulated/SimulatedNotifications.h"
#include "device/simulated/SimulatedProcess.h"
#include "device/simulated/SimulatedScreen.h"
#include "device/simulated/SimulatedSensor.h"
#include "device/simulated/SimulatedServices.h"
#include "device/simulated/SimulatedSystem.h"
#include "device/simulated/SimulatedWatch.h"
#include "device/simulated/SimulatedXpc.h"
#include "device/simulated/VirtualTimeline.h"

namespace sentrel::simulated {

/// A whole device in memory, on virtual time, with any number of processes. Its parts are values
/// with setters, and remember what was asked of them. One thread only.
class SimulatedDevice {
 public:
  SimulatedDevice();

  /// Starts a process. The device outlives it.
  std::unique_ptr<SimulatedProcess> launch(const std::string& bundleIdentifier);

  VirtualTimeline& time() noexcept { return *timeline_; }
  SimulatedFiles& files() noexcept { return *files_; }
  NotificationHub& darwin() noexcept { return *darwin_; }
  NotificationHub& distributed() noexcept { return *distributed_; }
  MessageHub& messages() noexcept { return *messages_; }
  WiFiState& wifi() noexcept { return *wifi_; }
  std::shared_ptr<const WiFiState> sharedWiFi() const noexcept { return wifi_; }
  SimulatedWatch& watch() noexcept { return *watch_; }
  XpcHub& xpc() noexcept { return *xpc_; }
  SimulatedAudioServices& audioServices() noexcept { return *audioServices_; }

  /// What was done with the lock, the applications, the sensor, the watch, the sounds, the
  /// libraries and the programs.
  Journal& journal() noexcept { return *journal_; }
  SystemState& system() noexcept { return *system_; }
  SimulatedScreen& screen() noexcept { return *screen_; }
  SimulatedSensor& sensor() noexcept { return *sensor_; }
  SimulatedLock& lock() noexcept { return *lock_; }
  SimulatedApplications& applications() noexcept { return *applications_; }
  SimulatedHomeScreen& homeScreen() noexcept { return *homeScreen_; }
  SimulatedLibraries& libraries() noexcept { return *libraries_; }
  SimulatedSystemLog& systemLog() noexcept { return *systemLog_; }
  SimulatedSwitchPanel& switchPanel() noexcept { return *switchPanel_; }
  SimulatedNotificationCenterController& notificationCenter() noexcept {
    return *notificationCenter_;
  }

  /// The glyph views' class, as a process finds it that loads its bundle from now on. At first the
  /// bundle is where newer systems have it.
  PKGlyphViewClass& glyphViewClass() noexcept { return *glyphViewClass_; }

  /// For making further objects that share the device's state.
  const std::shared_ptr<SimulatedSensor>& sharedSensor() const noexcept { return sensor_; }
  const std::shared_ptr<SimulatedLock>& sharedLock() const noexcept { return lock_; }
  const SharedApplications& sharedApplications() const noexcept { return applications_; }

  /// Gives a process everything that any process has but what is its own.
  void addCommonParts(Platform& platform) const;

  /// Gives a process the classes that only the home screen's has, as its system version has them.
  /// A test takes some away again, or gives them to another process.
  void addSpringBoardClasses(Platform& platform) const;

  /// Likewise those of the sharing daemon.
  void addSharingDaemonClasses(Platform& platform) const;

 private:
  friend class SimulatedProcess;

  void addSensorClasses(Platform& platform, int version) const;
  void installGlyphBundle();
  void installBiometricKitBundle();

  std::shared_ptr<VirtualTimeline> timeline_;
  std::shared_ptr<SimulatedFiles> files_;
  std::shared_ptr<NotificationHub> darwin_;
  std::shared_ptr<NotificationHub> distributed_;
  std::shared_ptr<MessageHub> messages_;
  std::shared_ptr<WiFiState> wifi_;
  std::shared_ptr<Journal> journal_;
  std::shared_ptr<SimulatedWatch> watch_;
  std::shared_ptr<XpcHub> xpc_;
  std::shared_ptr<SimulatedAudioServices> audioServices_;
  std::shared_ptr<SystemState> system_;
  std::shared_ptr<SimulatedScreen> screen_;
  std::shared_ptr<SimulatedSensor> sensor_;
  std::shared_ptr<SimulatedLock> lock_;
  std::shared_ptr<SimulatedApplications> applications_;
  std::shared_ptr<SimulatedHomeScreen> homeScreen_;
  std::shared_ptr<SimulatedLibraries> libraries_;
  std::shared_ptr<SimulatedSystemLog> systemLog_;
  std::shared_ptr<SimulatedSwitchPanel> switchPanel_;
  std::shared_ptr<SimulatedNotificationCenterController> notificationCenter_;
  std::shared_ptr<PKGlyphViewClass> glyphViewClass_;
};

}  // namespace sentrel::simulated
