#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/screen/PinnedFonts.h"
#include "device/simulated/DeviceRootReader.h"
#include "device/simulated/SimulatedDevice.h"
#include "programs/sim/PhoneProcess.h"
#include "programs/sim/Requests.h"

namespace sentrel::sim {

/// How much had happened at some moment.
struct Mark {
  std::size_t posted = 0;
  std::size_t logged = 0;
  std::size_t vibrations = 0;
  std::size_t taps = 0;
  std::size_t actions = 0;
};

/// A whole phone on virtual time: the home screen, its sharing daemon and any number of
/// applications, set up from a device root that it reads and never writes.
///
/// It plays the hooking side as well: it asks the lock controller what the user's actions need,
/// carries out what was allowed, and tells every process of a lock.
class Phone {
 public:
  /// Throws std::runtime_error when the fonts are missing.
  explicit Phone(const std::string& root);
  ~Phone();
  Phone(const Phone&) = delete;
  Phone& operator=(const Phone&) = delete;

  /// One line for each thing of the device root that could not be used.
  const std::vector<std::string>& complaints() const noexcept { return reader_.complaints(); }

  simulated::SimulatedDevice& device() noexcept { return device_; }
  const std::shared_ptr<const screen::PinnedFonts>& fonts() const noexcept { return fonts_; }

  // --- Processes -----------------------------------------------------------------------------

  PhoneProcess& homeScreen() noexcept { return *homeScreen_; }

  /// Null where it does not run.
  PhoneProcess* application(const std::string& bundleIdentifier);

  /// The application at the front; null for the home screen.
  PhoneProcess* front();

  /// What the user can see of, the frontmost first: the home screen's own prompts lie over all.
  std::vector<PhoneProcess*> visibleProcesses();

  /// Brings an installed application to the front, and starts it where it does not run.
  void open(const std::string& bundleIdentifier);
  void goHome();
  /// The application at the front, or the home screen.
  PhoneProcess& current();

  void turn(UIInterfaceOrientation orientation);

  PasscodeOptions& passcodeOptions() noexcept { return passcodeOptions_; }
  /// The passcode screen of what is at the front.
  PasscodeHost& passcodeHost() { return current().passcodeHost(passcodeOptions_); }
  void quit(const std::string& bundleIdentifier);

  /// Ends every process and starts the home screen again, with what is set on the device by then.
  void restart();

  // --- Requests ------------------------------------------------------------------------------

  /// Takes down a request. What the caller does when it is allowed to go on runs outside every
  /// process, on the next turn.
  std::function<void(bool authenticated, bool allowed)> request(std::string what,
                                                                std::function<void()> onAllowed);
  Requests& requests() noexcept { return requests_; }

  // --- Time ----------------------------------------------------------------------------------

  /// Called after each moment in which anything ran.
  void setOnMoment(std::function<void()> onMoment) { onMoment_ = std::move(onMoment); }

  void pass(Seconds time);

  /// Lets everything happen that is due now.
  void settle() { pass(Seconds(0)); }

  void lock();
  void unlock();
  void dim();

  /// Where pictures go; with none, none are taken.
  void setPictureFolder(std::string folder) { pictureFolder_ = std::move(folder); }
  const std::optional<std::string>& pictureFolder() const noexcept { return pictureFolder_; }

  // --- What was noticed ----------------------------------------------------------------------

  /// The log lines of the applications.
  const std::vector<std::string>& logLines() const noexcept { return logLines_; }

  /// All that has happened so far.
  Mark everything();

  /// From when on the script counts.
  const Mark& mark() const noexcept { return mark_; }
  void setMark() { mark_ = everything(); }

  /// Whether any process holds the sensor, or has not given it back to whom it took it from.
  bool isSensorHeld();

 private:
  class SystemObserver;

  void fillFiles(const std::string& root);
  void startHomeScreen();
  void startSharingDaemon();
  void lendSensorToSystem();
  void endProcesses();
  std::unique_ptr<PhoneProcess> start(const std::string& bundleIdentifier,
                                      const std::function<std::shared_ptr<UIWindow>()>& content);
  void bringToFront(const std::optional<std::string>& bundleIdentifier);
  void tellAll(void (*tell)());
  void noticeLock();
  void runDeferred();

  simulated::SimulatedDevice device_;
  simulated::DeviceRootReader reader_;
  std::shared_ptr<const screen::PinnedFonts> fonts_;
  std::shared_ptr<TextMeasuring> textMeasuring_;
  std::shared_ptr<SystemObserver> systemObserver_;
  std::unique_ptr<simulated::SimulatedProcess> sharingDaemon_;
  std::unique_ptr<PhoneProcess> homeScreen_;
  std::vector<std::unique_ptr<PhoneProcess>> applications_;
  Requests requests_;
  std::vector<std::function<void()>> deferred_;
  std::function<void()> onMoment_;
  std::vector<std::string> logLines_;
  std::optional<std::string> pictureFolder_;
  PasscodeOptions passcodeOptions_;
  Mark mark_;
  bool knowsOfLock_ = false;
};

}  // namespace sentrel::sim
