#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Platform.h"

namespace sentrel {

class BridgeSettings;
struct BridgeState;
class SNAuthenticationView;
class SNAuthenticationViewController;
class SNSettings;
class SNSimplePasscodeView;
class SNTouchIDManager;
class SNWiFiManager;
class SNWindow;
class SentrelController;
class UIApplication;

/// The library's composition root: one process's platform and the shared instances that live in
/// that process.
///
/// Each shared instance is made on its first use, once, from any thread, and lives as long as the
/// Process, which a program keeps until it ends. Classes with a `shared…` operation only look up
/// the current Process. A test makes as many processes as it likes and enters them by a Scope.
class SENTREL_API Process {
 public:
  explicit Process(Platform platform);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  /// The process that the calling thread is in: the innermost Scope's, else the main one. Ends the
  /// program with a clear line when there is neither.
  static Process& current();

  /// Makes `process` the one that every thread is in unless a Scope says otherwise; null for none.
  static void setMain(Process* process) noexcept;

  /// Puts the calling thread inside a process for as long as the scope lives.
  class SENTREL_API Scope {
   public:
    explicit Scope(Process& process) noexcept;
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Process* previous_;
  };

  Platform& platform() noexcept { return platform_; }

  /// Whether this is the home-screen process. A process is so named from its start to its end.
  bool isSpringBoard() const noexcept { return isSpringBoard_; }

  UIApplication& application();
  SNSettings& settings();
  SNWiFiManager& wifiManager();
  SentrelController& controller();

  /// The narrow view by which the bridge reaches the settings above it.
  const BridgeSettings& bridgeSettings();

  const std::shared_ptr<SNTouchIDManager>& touchIDManager();

  /// That manager by the interface under which the bridge, which lies below it, hands it events.
  std::shared_ptr<BiometricObserver> biometricMonitor();

  // Views and their controllers are shared with whoever shows them.
  const std::shared_ptr<SNSimplePasscodeView>& simplePasscodeView();
  const std::shared_ptr<SNAuthenticationView>& authenticationView();
  const std::shared_ptr<SNAuthenticationViewController>& authenticationViewController();
  const std::shared_ptr<SNWindow>& overlayWindow();

  /// What the bridge keeps for this process.
  BridgeState& bridgeState();

 private:
  template <class T>
  class Shared {
   public:
    template <class Make>
    T& get(Make make) {
      // Every question of the settings comes by here: the way once it is made is one load.
      if (T* object = made_.load(std::memory_order_acquire)) [[likely]]
        return *object;
      return *share(make);
    }

    template <class Make>
    const std::shared_ptr<T>& share(Make make) {
      std::call_once(once_, [&] {
        object_ = make();
        made_.store(object_.get(), std::memory_order_release);
      });
      return object_;
    }

   private:
    std::once_flag once_;
    std::shared_ptr<T> object_;
    std::atomic<T*> made_ = nullptr;
  };

  class LateSessions;

  Platform platform_;
  const bool isSpringBoard_;
  std::unique_ptr<LateSessions> sessions_;
  Shared<UIApplication> application_;
  Shared<SNSettings> settings_;
  Shared<SNWiFiManager> wifiManager_;
  Shared<SNTouchIDManager> touchIDManager_;
  Shared<SentrelController> controller_;
  Shared<BridgeState> bridgeState_;
  Shared<SNSimplePasscodeView> simplePasscodeView_;
  Shared<SNAuthenticationView> authenticationView_;
  Shared<SNAuthenticationViewController> authenticationViewController_;
  Shared<SNWindow> overlayWindow_;
};

}  // namespace sentrel
