#pragma once

#include <gmock/gmock.h>

#include <cstdio>
#include <string>
#include <vector>

#include "sentrel/passcode/PasscodeFlow.h"
#include "tests/support/HomeScreenTest.h"

namespace sentrel {

/// What was called and what became visible, a line each with the seconds since the start.
class PasscodeLog {
 public:
  explicit PasscodeLog(simulated::SimulatedDevice& device)
      : device_(device), start_(device.time().now()) {}

  void add(const std::string& what) {
    char time[16];
    std::snprintf(time, sizeof time, "%.2f ", (device_.time().now() - start_).count());
    lines_.push_back(time + what);
  }

  /// The lines since the last call, and starts the clock again.
  std::vector<std::string> take() {
    start_ = device_.time().now();
    return std::exchange(lines_, {});
  }

 private:
  simulated::SimulatedDevice& device_;
  WallTime start_;
  std::vector<std::string> lines_;
};

/// A delegate with every operation, on a passcode in memory.
class RecordingDelegate : public SNPasscodeViewControllerDelegate {
 public:
  explicit RecordingDelegate(PasscodeLog& log) : log_(log) {}

  std::optional<std::string> passcode() override { return stored; }
  void deletePasscode() override { log_.add("deletePasscode"), stored.reset(); }
  void savePasscode(const std::optional<std::string>& passcode) override {
    log_.add("savePasscode " + passcode.value_or("none"));
    stored = passcode;
  }
  void passcodeWasEnabled() override { log_.add("passcodeWasEnabled"); }
  void passcodeWasEnteredSuccessfully() override { log_.add("passcodeWasEnteredSuccessfully"); }
  void passcodeViewControllerWillClose() override { log_.add("passcodeViewControllerWillClose"); }
  void maxNumberOfFailedAttemptsReached() override { log_.add("maxNumberOfFailedAttemptsReached"); }
  void logoutButtonWasPressed() override { log_.add("logoutButtonWasPressed"); }
  bool allowUnlockWithTouchID() override { return allowsTouchID; }
  void saveAllowUnlockWithTouchID(bool allowed) override { allowsTouchID = allowed; }
  void saveTimerStartTime() override { log_.add("saveTimerStartTime"); }
  bool didPasscodeTimerEnd() override { return timerEnded; }

  std::optional<std::string> stored;
  bool allowsTouchID = false;
  bool timerEnded = false;

 protected:
  PasscodeLog& log_;
};

/// The flow with nothing to look at: a text in place of the field, a line for each outcome.
class RecordedFlow final : public PasscodeFlow, public std::enable_shared_from_this<RecordedFlow> {
 public:
  RecordedFlow(Platform& platform, PasscodeLog& log) : PasscodeFlow(platform), log_(log) {
    loadFlowDefaults();
    shown_ = display();
  }

  /// As a keyboard does it: one edit at the end of the text. Whether it was accepted.
  bool type(const std::string& text) { return replace({utf16Length(field), 0}, text); }
  bool replace(NSRange range, const std::string& text) {
    const bool accepted = edit(field, range, text);
    if (accepted) field = stringByReplacingCharactersInRange(field, range, text);
    return accepted;
  }

  /// As the user does it.
  void hideKeyboard() { endEditing(); }

  std::string field;
  bool isEditing = false;
  bool hasWindow = true;

 protected:
  std::weak_ptr<PasscodeFlow> weakFlow() override { return weak_from_this(); }
  bool isScreenLoaded() const override { return true; }
  bool isEntryFieldEditing() const override { return isEditing; }
  double failureCornerRadius() const override { return 14; }
  void showTitle(const std::string& title) override {
    if (!title.empty()) log_.add("title " + title);
  }
  void layOutAgain() override {}
  void makeDigitBoxes() override { log_.add("boxes " + std::to_string(digitsCount())); }
  void emptyEntryField() override { field.clear(); }
  void startEditing() override { isEditing = true; }
  void endEditing() override { isEditing = isEditing && !mayEndEditing(); }
  void shakeDigitBoxes(const CAAnimation& shake) override { log_.add("shake " + text(shake)); }
  void slideStep(const CAAnimation& slide) override { log_.add("swipe " + text(slide)); }
  void slideAway(Seconds duration) override { log_.add("slide away " + text(duration)); }
  void present(const std::shared_ptr<UIViewController>&) override { log_.add("present"); }
  bool coverWindow(bool animated) override {
    log_.add(animated ? "slide in" : "cover window");
    return hasWindow;
  }
  void leave(PasscodeLeaving way) override {
    static constexpr const char* names[] = {"remove from window", "dismiss", "pop animated", "pop"};
    log_.add(names[static_cast<int>(way)]);
  }
  void showNavBar(const std::string& title) override { log_.add("bar " + (bar_ = title)); }
  void removeNavBar() override { log_.add("no bar"); }
  std::string navBarButtonTitle() const override { return bar_; }
  void showCover() override { log_.add("cover"); }
  void hideCover() override { log_.add("uncover"); }

  /// Only what changed to the eye.
  void show(const PasscodeDisplay& now) override {
    if (now.prompt != shown_.prompt) log_.add(now.prompt);
    if (now.isInfoHidden != shown_.isInfoHidden) log_.add(now.isInfoHidden ? "no info" : now.info);
    if (now.isFailureHidden != shown_.isFailureHidden || now.failure != shown_.failure)
      log_.add(now.isFailureHidden ? "no failure" : "[" + now.failure + "]");
    if (now.isOKButtonHidden != shown_.isOKButtonHidden)
      log_.add(now.isOKButtonHidden ? "no OK" : "OK");
    if (now.isContainerHidden != shown_.isContainerHidden)
      log_.add(now.isContainerHidden ? "hide fields" : "show fields");
    shown_ = now;
  }

 private:
  static std::string text(Seconds seconds) { return testing::PrintToString(seconds.count()); }
  static std::string text(const CAAnimation& animation) {
    return text(animation.duration) +
           (animation.timing.curve == CATiming::Curve::linear ? " linear" : " ease");
  }

  PasscodeLog& log_;
  PasscodeDisplay shown_;
  std::string bar_;
};

/// A flow on a simulated phone.
class PasscodeFlowTest : public HomeScreenTest {
 protected:
  PasscodeFlowTest() { flow->setDelegate(delegate); }

  PasscodeLog log{device};
  std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>(log);
  std::shared_ptr<RecordedFlow> flow = std::make_shared<RecordedFlow>(platform(), log);
};

}  // namespace sentrel
