#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sentrel/authui/PromptSurface.h"
#include "sentrel/controller/DeferredActions.h"
#include "sentrel/platform/Biometrics.h"
#include "sentrel/platform/HomeScreen.h"
#include "sentrel/platform/Late.h"
#include "sentrel/platform/PSSpecifier.h"
#include "sentrel/platform/Platform.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/UnlockSessionStore.h"
#include "sentrel/uikit/UIViewController.h"

namespace sentrel {

class Bridge;
class SNTouchIDManager;
class SNWindow;

/// The two ways to prompt; the running system says which is the one to take.
struct PromptSurfaces {
  std::unique_ptr<PromptSurface> alert;
  std::unique_ptr<PromptSurface> legacy;
};

/// The lock controller of one process: every protected action goes through it. It decides whether
/// to prompt, runs the prompt, delivers the outcome once and keeps the unlock sessions. The
/// sessions are the home-screen process's: from every other process it is told of them and asked
/// about them.
///
/// A request that comes while another is in progress takes its place: of two prompts the earlier
/// goes, and its completion is then never called.
///
/// Main thread only, but for sharedInstance.
class SENTREL_API SentrelController final : public UnlockSessions,
                                            public PromptOwner,
                                            public std::enable_shared_from_this<SentrelController> {
 public:
  using SessionTimes = UnlockSessionStore::Times;
  using SessionKeys = UnlockSessionStore::Keys;

  /// `authenticated`: identity was just proven. `allowed`: the caller may go on. Not protected is
  /// (NO, YES), success (YES, YES), cancel and failure (NO, NO).
  using Completion = std::function<void(bool authenticated, bool allowed)>;

  /// Whose view controller presents the prompt.
  using Presenter = std::shared_ptr<UIViewController>;

  /// A localised text; none shows nothing.
  using Text = std::optional<std::string>;

  /// The current process's controller.
  static SentrelController& sharedInstance();

  /// What sharedInstance is made by: observes the results of other processes and loads the watch's
  /// framework. What is handed in by reference outlives the controller.
  static std::shared_ptr<SentrelController> makeShared(Bridge& bridge, SNSettings& settings,
                                                       UnlockSessionStore& sessions,
                                                       std::shared_ptr<SNTouchIDManager> monitor,
                                                       PromptSurfaces surfaces,
                                                       Late<SNWindow> overlayWindow);

  // --- Requests ------------------------------------------------------------------------------
  //
  // Each ends in its completion, which may be empty, and records a session on success. The first
  // three ask themselves whether the item is protected, and call the completion at once where it
  // is not; for the others the caller has asked. A null presenter shows nothing.

  void requiresAuthentication(const std::string& bundleIdentifier, const Presenter& delegate,
                              Completion completion);
  void requiresAuthenticationForSystemService(const std::string& service, const Presenter& delegate,
                                              Completion completion);
  void requiresAuthenticationForFolder(const std::shared_ptr<SBFolder>& folder,
                                       const Presenter& delegate, Completion completion);

  /// Records no session.
  void requiresAuthenticationForItem(const Text& title, const Text& message,
                                     const Presenter& delegate, Completion completion);

  void requiresAuthenticationForReboot(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForRespring(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForAppArrangement(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForAppDeletion(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForAppSwitcher(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForFlipSwitch(const std::string& switchIdentifier,
                                           const Presenter& delegate, Completion completion);
  void requiresAuthenticationForSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                          const Presenter& delegate, Completion completion);
  /// The session's key is the specifier itself, not its identifier.
  void requiresAuthenticationForSpecifier(const std::shared_ptr<PSSpecifier>& specifier,
                                          const Text& title, const Presenter& delegate,
                                          Completion completion);
  /// An application on an older system has the home screen prompt, and hears of the result.
  void requiresAuthenticationForPhotos(const Presenter& delegate, Completion completion);
  void requiresAuthenticationForLockscreenNotifications(const Presenter& delegate,
                                                        Completion completion);
  void requiresAuthentication(const Text& title, const Text& message, const Presenter& delegate,
                              Completion completion);
  /// Prompts over whatever is on the screen, from the overlay window, on a later turn.
  void requiresAuthentication(const Text& title, const Text& message, Completion completion);

  // --- The prompt ----------------------------------------------------------------------------

  /// Shows a prompt as soon as the control centre is out of the way. With `forceTouch` it opens on
  /// the glyph even where only the passcode is to be used.
  void showAuthenticationViewController(const Text& title, const Text& message, bool forceTouch,
                                        const Presenter& delegate, Completion completion);
  void showAuthenticationViewController(const Text& title, const Text& message,
                                        const Presenter& delegate, Completion completion = {});

  /// Both act on a later turn. The first resets the glyph when the prompt is gone.
  void dismissAuthenticationViewController(bool animated);
  void dismissAuthenticationViewController(bool animated, std::function<void()> completion);

  /// Brings the glyph of the view in use to `state`. The completion may be empty.
  void animateFingerPrintActions(std::int64_t state, bool animated,
                                 std::function<void()> completionHandler);

  /// The prompt that was shown last and not dismissed: an SNAlertController, an SNAlertView, or
  /// null.
  std::shared_ptr<UIResponder> alertController() const;

  /// Whether a prompt is showing. An application that is not the system's asks the home screen
  /// whether one shows there.
  bool isAlertShowing();
  /// Kept, and not consulted.
  void setAlertShowing(bool value) noexcept { alertShowing_ = value; }

  // --- Start and outcome ---------------------------------------------------------------------

  /// Arms the biometric monitor for this controller and starts it.
  void startSentrelEvents();

  void biometricKitInterfaceHandleEvent(const std::shared_ptr<BiometricInterface>& interface,
                                        BiometricEvent event);
  void biometricKitInterfaceObserveEvent(const std::shared_ptr<BiometricInterface>& interface,
                                         BiometricEvent event);

  void passcodeMatched(bool matched, bool animated);
  void passcodeMatchedSuccessfully() override;
  void passcodeNotMatched() override {}

  void alertView(UIAlertView& alertView, int didDismissWithButtonIndex) override;

  /// Ends the request in progress: the one place where that happens.
  void executeCompletionBlock(bool allowed, BiometricEvent observeEvent);

  /// Ends the request that was handed to the home screen.
  void handleAuthentication(bool success);

  /// Shakes the prompt and vibrates.
  void handleAuthenticationFailed(bool isFinal);
  void vibrateOnError();
  void invokeCustomInvocation();

  /// A success has just been taken.
  bool isJustAuthenticated() const noexcept { return justAuthenticated_; }
  void setJustAuthenticated(bool value) noexcept { justAuthenticated_ = value; }

  /// Run after the success of the request that it belongs to, as DeferredActions tells; dropped
  /// when that is cancelled, fails or is replaced. Null for none.
  std::shared_ptr<Invocation> invocation() const { return deferred_.latest(); }
  void setInvocation(std::shared_ptr<Invocation> invocation);

  /// Of the request in progress, and of the one handed to the home screen; empty for none.
  const Completion& completionBlock() const noexcept { return completionBlock_; }
  const Completion& completionHandler() const noexcept { return completionHandler_; }

  // --- Unlock sessions -----------------------------------------------------------------------

  /// Records that `key` was authenticated just now. None, or sessions switched off, does nothing.
  void updateLastAuthenticationTime(const std::optional<SessionKey>& key) { sessions_.record(key); }

  /// Whether an open session covers `item`. Outside the home-screen process the caches of this
  /// process are not consulted, and a missing reply means no.
  bool shouldIgnoreAuthentication(const SessionItem& item) override {
    return sessions_.shouldIgnoreAuthentication(item);
  }

  /// Fails the prompt on screen and gives the sensor back; the first also ends the sessions that
  /// last until the device locks. Timed sessions outlive a lock.
  void deviceLocked();
  void deviceScreenDimmed();

  /// The time of the last success of each key, since the process started.
  const SessionTimes& unlockSessionCache() const noexcept { return sessions_.times(); }

  /// What was authenticated behind the last lock of the device.
  const SessionKeys& rememberTillDeviceLockCache() const noexcept { return sessions_.untilLock(); }

  /// The time of the last success of any key.
  const std::optional<WallTime>& lastUnlockedTime() const noexcept { return sessions_.lastTime(); }

 private:
  SentrelController(Bridge& bridge, SNSettings& settings, UnlockSessionStore& sessions,
                    std::shared_ptr<SNTouchIDManager> monitor, PromptSurfaces surfaces,
                    Late<SNWindow> overlayWindow);

  using RequestNumber = DeferredActions::Request;

  struct Request {
    RequestNumber number = DeferredActions::nobody;
    Text title;
    Text message;
    Presenter presenter;
    bool isTouchForced = false;
    /// Known when it begins.
    bool isPasscodeForced = false;
  };

  void observeResults();
  void loadWatchFramework();

  Completion recording(Completion completion, std::function<std::optional<SessionKey>()> key);
  void promptForService(std::string_view service, const Presenter& delegate, Completion completion);

  void allowUnasked(const Completion& completion);
  RequestNumber takeNumber();
  void beginLater(Request request, Completion completion);
  void begin(Request request, Completion completion);
  void show(const Request& request, PromptSurface& surface);
  void switchModes();
  void followMode();
  void restSensor();
  void cancel();
  void applyKeyboardRule(const Request& request);
  void dismissNow(bool animated, std::function<void()> completion);

  /// The surface that the running system has a prompt on now.
  PromptSurface& surface() const;

  /// The surface that a prompt was shown on and not dismissed from, or null.
  PromptSurface* shownSurface() const;
  std::shared_ptr<SNAuthenticationView> viewInUse() const { return surface().viewInUse(); }
  void showGlyph(GlyphState state, bool animated, std::function<void()> completion);

  bool isInProgress(RequestNumber request) const noexcept {
    return completionBlock_ && request == request_;
  }
  RequestNumber requestInProgress() const noexcept {
    return completionBlock_ ? request_ : DeferredActions::nobody;
  }
  bool isPasscodeForced() const noexcept { return completionBlock_ && passcodeForced_; }
  bool hasStoredPasscode() const;

  bool isOwnPromptShowing() const;
  bool isPromptWaiting();

  void handleFailedTry(BiometricEvent event);
  void handleFingerUp();
  void handleAttemptsExhausted();
  void handleResult(BiometricEvent event);
  void finishResult(BiometricEvent event, GlyphState shown);
  void resetGlyph();
  void scheduleGlyphReset();
  void restartIfShowing();
  void takeMatch();
  void askWatch();
  void takeWatchAnswer(RequestNumber request, const PropertyList& answer);
  void failPromptAndStop();

  /// Runs `block` with the controller where it is still there.
  template <class Block>
  auto whileAlive(Block block) {
    return [weak = weak_from_this(), block = std::move(block)](auto&&... arguments) {
      if (const auto self = weak.lock())
        block(*self, std::forward<decltype(arguments)>(arguments)...);
    };
  }

  Bridge& bridge_;
  Platform& platform_;
  SNSettings& settings_;
  UnlockSessionStore& sessions_;
  const std::shared_ptr<SNTouchIDManager> monitor_;
  const PromptSurfaces surfaces_;
  const Late<SNWindow> overlayWindow_;
  std::vector<Observation> observations_;
  std::shared_ptr<DynamicLibrary> watchFramework_;

  bool alertShowing_ = false;

  RequestNumber lastAsked_ = DeferredActions::nobody;
  /// The request that began last, and the one whose prompt was shown last.
  RequestNumber request_ = DeferredActions::nobody;
  RequestNumber shownFor_ = DeferredActions::nobody;
  bool passcodeForced_ = false;
  Completion completionBlock_;
  Completion completionHandler_;
  DeferredActions deferred_;
  bool justAuthenticated_ = false;
  bool lastResultWasMatch_ = false;
};

}  // namespace sentrel
