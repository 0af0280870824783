#include "host/PasscodeKeeper.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sentrel/Process.h"
#include "sentrel/passcode/SNPasscodeViewController.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::host {
namespace {

constexpr std::size_t promptDigits = 6;
constexpr double unknown = -1;

/// As long as a passcode, and no text: nothing that is typed is ever equal to it.
std::string whatNobodyTypes() {
  return std::string(promptDigits, '\xFF');
}

bool isSixDigits(const std::string& passcode) {
  return passcode.size() == promptDigits &&
         passcode.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

PasscodeKeeper::PasscodeKeeper(Complain complain)
    : platform_(Process::current().platform()),
      settings_(SNSettings::sharedSettings()),
      complain_(std::move(complain)),
      record_(platform_),
      lockout_(record_, *platform_.clock) {}

void PasscodeKeeper::attach(const std::shared_ptr<PasscodeKeeper>& keeper,
                            const std::shared_ptr<SNPasscodeViewController>& screen) {
  keeper->screen_ = screen;
  screen->setDelegate(keeper);
  screen->_loadDefaults();
  keeper->useSixBoxes();
}

void PasscodeKeeper::useSixBoxes() {
  if (const auto screen = screen_.lock()) screen->setDigitsCount(promptDigits);
}

void PasscodeKeeper::say(const std::string& text) const {
  if (complain_) complain_(text);
}

// --- The passcode --------------------------------------------------------------------------------

bool PasscodeKeeper::canReadSettings() const {
  return platform_.propertyListFiles->readDictionary(std::string(settingsFilePath))
      .dictionary.has_value();
}

std::optional<std::string> PasscodeKeeper::passcode() {
  const auto& stored = settings_.passcode();
  hadPasscode_ = stored || (hadPasscode_ && !canReadSettings());
  if (!hadPasscode_) return std::nullopt;
  auto plain = stored ? settings_.decryptString(*stored) : std::nullopt;
  return plain && !plain->empty() ? plain : whatNobodyTypes();
}

void PasscodeKeeper::savePasscode(const std::optional<std::string>& passcode) {
  if (!passcode || passcode->empty())
    return say("no new passcode was typed: the stored one stays as it is");
  if (!isSixDigits(*passcode))
    return say(
        "the prompt takes exactly six digits: another passcode could not be entered there, "
        "and was not stored");
  if (!settings_.savePasscode(*passcode))
    return say("the settings file could not be written: the passcode was not stored");
  settings_.reloadSettings();
}

void PasscodeKeeper::deletePasscode() {
  if (!settings_.removePasscode())
    return say("the settings file could not be written: the passcode was not removed");
  settings_.reloadSettings();
  useSixBoxes();
}

bool PasscodeKeeper::passcodeWillBeChecked() {
  if (lockout_.beginAttempt()) return true;
  const auto seconds = static_cast<std::int64_t>(std::ceil(lockout_.remaining().count()));
  say("too many attempts: every entry is refused for another " + std::to_string(seconds) + " s");
  return false;
}

// --- The fingerprint -----------------------------------------------------------------------------

bool PasscodeKeeper::allowUnlockWithTouchID() {
  return record_.flag(names_.keychainAllowUnlockWithTouchID).value_or(false);
}

void PasscodeKeeper::saveAllowUnlockWithTouchID(bool allowed) {
  record_.store(names_.keychainAllowUnlockWithTouchID, allowed);
}

// --- The timer -----------------------------------------------------------------------------------

double PasscodeKeeper::timerDuration() {
  return record_.number(names_.keychainTimerDurationUsername).value_or(unknown);
}

void PasscodeKeeper::saveTimerDuration(double seconds) {
  record_.store(names_.keychainTimerDurationUsername, seconds);
}

double PasscodeKeeper::timerStartTime() {
  return record_.number(names_.keychainTimerStartUsername).value_or(unknown);
}

void PasscodeKeeper::saveTimerStartTime() {
  record_.store(names_.keychainTimerStartUsername, now());
}

bool PasscodeKeeper::didPasscodeTimerEnd() {
  const double duration = timerDuration();
  if (!(duration >= 0)) return false;
  const double start = timerStartTime();
  const bool isRunning = start >= 0 && start <= now() && now() - start < duration;
  return !isRunning;
}

}  // namespace sentrel::host
