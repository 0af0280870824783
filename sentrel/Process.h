#pragma once

#include <atomic>
#include <memory>
#include <mutex>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/ProcessContext.h"

namespace sentrel {

class Bridge;
class SNAuthenticationView;
class SNAuthenticationViewController;
class SNPasscodeViewController;
class SNSettings;
class SNSimplePasscodeView;
class SNTouchIDManager;
class SNWiFiManager;
class SNWindow;
class SentrelController;
class UIApplication;
class UnlockSessionStore;

/// The library's composition root: one process's platform and the shared instances that live in
/// that process. It makes each and hands it what it needs; nobody below it does.
///
/// Each shared instance is made on its first use, once, from any thread, and lives as long as the
/// Process, which a program keeps until it ends. Classes with a `shared…` operation only look up
/// the current Process. A test makes as many processes as it likes and enters them by a Scope.
class SENTREL_API Process final : public ProcessContext {
 public:
  explicit Process(Platform platform);
  ~Process();

  /// The process that the calling thread is in, as ProcessContext::current() tells.
  static Process& current() { return static_cast<Process&>(ProcessContext::current()); }

  UIApplication& application();
  Bridge& bridge();
  SNSettings& settings();
  SNWiFiManager& wifiManager();
  UnlockSessionStore& sessions();
  SentrelController& controller();

  const std::shared_ptr<SNTouchIDManager>& touchIDManager();

  // Views and their controllers are shared with whoever shows them.
  const std::shared_ptr<SNSimplePasscodeView>& simplePasscodeView();
  const std::shared_ptr<SNAuthenticationView>& authenticationView();
  const std::shared_ptr<SNAuthenticationViewController>& authenticationViewController();
  const std::shared_ptr<SNPasscodeViewController>& passcodeViewController();
  const std::shared_ptr<SNWindow>& overlayWindow();

 private:
  template <class T>
  class Shared {
   public:
    template <class Make>
    T& get(ProcessContext& owner, Make make) {
      // Every question of the settings comes by here: the way once it is made is one load.
      if (T* object = ifMade()) [[likely]]
        return *object;
      return *share(owner, make);
    }

    /// Whoever asks first, what is made is made inside its owner, and takes its parts from there.
    template <class Make>
    const std::shared_ptr<T>& share(ProcessContext& owner, Make make) {
      std::call_once(once_, [&] {
        const Scope inside(owner);
        object_ = make();
        made_.store(object_.get(), std::memory_order_release);
      });
      return object_;
    }

    /// Null before the first use, and while it is being made.
    T* ifMade() const noexcept { return made_.load(std::memory_order_acquire); }

   private:
    std::once_flag once_;
    std::shared_ptr<T> object_;
    std::atomic<T*> made_ = nullptr;
  };

  class LateSessions;
  class LateSettings;

  std::unique_ptr<LateSessions> lateSessions_;
  std::unique_ptr<LateSettings> lateSettings_;
  Shared<UIApplication> application_;
  Shared<Bridge> bridge_;
  Shared<SNSettings> settings_;
  Shared<SNWiFiManager> wifiManager_;
  Shared<UnlockSessionStore> sessions_;
  Shared<SNTouchIDManager> touchIDManager_;
  Shared<SentrelController> controller_;
  Shared<SNSimplePasscodeView> simplePasscodeView_;
  Shared<SNAuthenticationView> authenticationView_;
  Shared<SNAuthenticationViewController> authenticationViewController_;
  Shared<SNPasscodeViewController> passcodeViewController_;
  Shared<SNWindow> overlayWindow_;
};

}  // namespace sentrel
