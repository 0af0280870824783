#include "programs/sim/PasscodeHost.h"

#include <algorithm>
#include <utility>

#include "programs/common/Hands.h"

namespace sentrel::sim {
namespace {

/// A ready delegate that also tells what it hears.
class NotingKeeper final : public host::PasscodeKeeper {
 public:
  explicit NotingKeeper(const PasscodeOptions& options)
      : PasscodeKeeper([&options](const std::string& text) { options.note(text); }),
        options_(options) {}

  std::optional<std::string> passcode() override {
    return options_.ownStorage ? own_ : PasscodeKeeper::passcode();
  }
  void savePasscode(const std::optional<std::string>& passcode) override {
    note("savePasscode");
    if (!options_.ownStorage)
      PasscodeKeeper::savePasscode(passcode);
    else if (passcode)
      own_ = passcode;
  }
  void deletePasscode() override {
    note("deletePasscode");
    options_.ownStorage ? own_.reset() : PasscodeKeeper::deletePasscode();
  }
  void passcodeWasEnabled() override { note("passcodeWasEnabled"); }
  void passcodeWasEnteredSuccessfully() override { note("passcodeWasEnteredSuccessfully"); }
  void passcodeViewControllerWillClose() override { note("passcodeViewControllerWillClose"); }
  void maxNumberOfFailedAttemptsReached() override { note("maxNumberOfFailedAttemptsReached"); }
  void logoutButtonWasPressed() override { note("logoutButtonWasPressed"); }

 private:
  void note(const char* what) const { options_.note(std::string("passcode screen: ") + what); }

  const PasscodeOptions& options_;
  std::optional<std::string> own_;
};

std::string flowOf(const SNPasscodeViewController& screen) {
  if (!screen.isCurrentlyOnScreen()) return "none";
  if (screen.displayedAsLockScreen()) return "lock";
  if (screen.isUserEnablingPasscode()) return "enable";
  if (screen.isUserChangingPasscode()) return "change";
  return screen.isUserTurningPasscodeOff() ? "turn-off" : "none";
}

std::string keyboardNow() {
  const auto field = programs::focusedField();
  if (!field) return "none";
  return field->keyboardType() == UIKeyboardType::numberPad ? "digits" : "letters";
}

std::string trimmed(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

}  // namespace

std::string describe(const ShownPasscodeScreen& screen) {
  if (screen.flow == "none") return screen.isCovered ? "covered" : "";
  std::string text = screen.flow + ", \"" + screen.prompt + "\"";
  text += screen.isFree ? ", free text of " + std::to_string(screen.filled)
                        : ", " + std::to_string(screen.filled) + " of " +
                              std::to_string(screen.boxes) + " boxes";
  if (!screen.failure.empty()) text += ", \"" + screen.failure + "\"";
  if (screen.isHidden) text += ", fields hidden";
  if (screen.isCovered) text += ", covered";
  return text + ", keyboard " + screen.keyboard;
}

PasscodeHost::PasscodeHost(const PasscodeOptions& options, const std::shared_ptr<UIWindow>& content,
                           bool hasNavigation)
    : options_(options),
      screen_(SNPasscodeViewController::sharedUser()),
      keeper_(std::make_shared<NotingKeeper>(options)),
      page_(std::make_shared<UIViewController>()),
      content_(content) {
  host::PasscodeKeeper::attach(keeper_, screen_);
  screen_->setHidesCancelButton(false);
  screen_->setHidesBackButton(false);
  // With its view comes that it hears of the application's coming and going.
  screen_->view();
  page_->setTitle("Sentrel");
  if (hasNavigation) navigation_ = UINavigationController::initWithRootViewController(page_);
  content_->setRootViewController(hasNavigation ? navigation_ : page_);
  takeOptions();
}

PasscodeHost::~PasscodeHost() {
  content_->setRootViewController(nullptr);
}

void PasscodeHost::takeOptions() {
  screen_->setMaxNumberOfAllowedFailedAttempts(options_.limit);
  keeper_->setLockoutRule(options_.lockout);
}

void PasscodeHost::prepare() {
  if (!options_.ownStorage) keeper_->useSixBoxes();
}

void PasscodeHost::tapEntry() const {
  const PasscodeElements& elements = screen_->elements();
  if (!elements.passcodeTextField || elements.animatingView->isHidden()) return;
  if (!screen_->isSimple())
    elements.passcodeTextField->becomeFirstResponder();
  else if (!elements.digitTextFieldsArray.empty())
    elements.digitTextFieldsArray.front()->becomeFirstResponder();
}

ShownPasscodeScreen PasscodeHost::look() const {
  const PasscodeElements& elements = screen_->elements();
  const PasscodeDisplay& display = screen_->display();
  const auto& cover = screen_->coverView();
  ShownPasscodeScreen seen;
  seen.flow = flowOf(*screen_);
  seen.isCovered = cover && !cover->isHidden();
  if (!elements.passcodeTextField) return seen;
  seen.title = screen_->title();
  seen.prompt = elements.enterPasscodeLabel->text();
  if (!display.isInfoHidden) seen.info = elements.enterPasscodeInfoLabel->text();
  if (!elements.failedAttemptLabel->isHidden())
    seen.failure = trimmed(elements.failedAttemptLabel->text());
  seen.isFree = !screen_->isSimple();
  seen.isHidden = elements.animatingView->isHidden();
  seen.boxes = elements.digitTextFieldsArray.size();
  seen.filled = seen.isFree ? utf16Length(elements.passcodeTextField->text())
                            : static_cast<std::size_t>(std::ranges::count_if(
                                  elements.digitTextFieldsArray,
                                  [](const auto& box) { return box->isSecureTextEntry(); }));
  seen.keyboard = keyboardNow();
  return seen;
}

}  // namespace sentrel::sim
