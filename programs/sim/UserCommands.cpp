// The user's fingers, face and time.

#include <filesystem>

#include "device/screen/Png.h"
#include "programs/common/Hands.h"
#include "programs/sim/Command.h"
#include "programs/sim/Picture.h"
#include "programs/sim/ShownPrompt.h"

namespace sentrel::sim {
namespace {

/// How long the sensor takes to know a finger or a face.
constexpr Seconds recognitionTime{0.1};

constexpr BiometricEvent seen = 1;
constexpr BiometricEvent matched = 3;
constexpr BiometricEvent unreadable = 7;
constexpr BiometricEvent notMatched = 2;
constexpr BiometricEvent lifted = 0;

/// Who takes what is typed and tapped: the frontmost prompt's process, else a passcode screen's.
PhoneProcess& handled(Phone& phone) {
  const auto prompts = shownPrompts(phone);
  if (!prompts.empty()) return *prompts.front().process;
  PhoneProcess& current = phone.current();
  if (!current.passcodeHost()) throw NotPossible("no prompt is on the screen");
  return current;
}

/// A passcode screen asks its system's dialog, and not the sensor's listeners.
bool answersOwner(Phone& phone, bool isMatch) {
  phone.device().sensor().evaluationError =
      isMatch ? std::nullopt : std::optional(PlatformError{"LocalAuthentication", -1, "failed"});
  return phone.device().sensor().answerOwner();
}

void show(Phone& phone, BiometricEvent result) {
  if (answersOwner(phone, result == matched)) return;
  phone.device().sensor().emit(seen);
  phone.pass(recognitionTime);
  phone.device().sensor().emit(result);
}

Action finger(Phone&, const Words& words) {
  constexpr const char* choices[] = {"match", "no-match", "too-wet", "lift"};
  constexpr BiometricEvent results[] = {matched, notMatched, unreadable, lifted};
  return [result = results[choiceOf(words[0], choices)]](Phone& phone) {
    simulated::SimulatedSensor& sensor = phone.device().sensor();
    if (!sensor.isTouchIDCapable) throw NotPossible("this phone has no sensor for fingers");
    result == lifted ? sensor.emit(lifted) : show(phone, result);
  };
}

Action face(Phone&, const Words& words) {
  constexpr const char* choices[] = {"match", "no-match"};
  return [isMatch = choiceOf(words[0], choices) == 0](Phone& phone) {
    if (!phone.device().sensor().isPearlIDCapable)
      throw NotPossible("this phone has no sensor for faces");
    show(phone, isMatch ? matched : notMatched);
  };
}

Action event(Phone&, const Words& words) {
  return [number = wholeNumberOf(words[0])](Phone& phone) { phone.device().sensor().emit(number); };
}

Action typeDigits(Phone&, const Words& words) {
  return [digits = words[0]](Phone& phone) {
    PhoneProcess& process = handled(phone);
    if (process.passcodeHost()) process.run([&] { process.passcodeHost()->tapEntry(); });
    const bool taken = process.run([&] { return programs::type(digits); });
    if (!taken) throw NotPossible("not every character was taken");
  };
}

Action tap(Phone&, const Words& words) {
  return [title = words[0]](Phone& phone) {
    const bool wasTapped = handled(phone).run([&] { return programs::tapButton(title); });
    if (wasTapped) return;
    const auto prompts = shownPrompts(phone);
    throw NotPossible("no button \"" + title + "\" can be tapped; there are: " +
                      (prompts.empty() ? "others" : buttonsOf(prompts.front())));
  };
}

Action pressHome(Phone&, const Words&) {
  return [](Phone& phone) { phone.goHome(); };
}

Action quit(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  return [identifier = words[0]](Phone& phone) { phone.quit(identifier); };
}

Action wait(Phone&, const Words& words) {
  return [time = Seconds(secondsOf(words[0]))](Phone& phone) { phone.pass(time); };
}

Action screenshot(Phone&, const Words& words) {
  return [file = words[0]](Phone& phone) {
    if (const auto& folder = phone.pictureFolder())
      screen::writePng(takePicture(phone), std::filesystem::path(*folder) / file);
  };
}

Action mark(Phone&, const Words&) {
  return [](Phone& phone) { phone.setMark(); };
}

constexpr Command commands[] = {
    {"finger", "match|no-match|too-wet|lift", "puts a finger on the sensor, or takes it away", 1, 1,
     finger},
    {"face", "match|no-match", "shows a face", 1, 1, face},
    {"event", "NUMBER", "has the sensor report any event", 1, 1, event},
    {"type", "DIGITS", "types into the prompt, or the passcode screen", 1, 1, typeDigits},
    {"tap", "BUTTON", "taps a button of either by its title", 1, 1, tap},
    {"press-home", "", "goes to the home screen", 0, 0, pressHome},
    {"quit", "BUNDLE-ID", "ends an application", 1, 1, quit},
    {"lock", "", "locks the phone", 0, 0,
     [](Phone&, const Words&) -> Action { return [](Phone& phone) { phone.lock(); }; }},
    {"unlock", "", "unlocks it", 0, 0,
     [](Phone&, const Words&) -> Action { return [](Phone& phone) { phone.unlock(); }; }},
    {"dim", "", "lets the screen dim", 0, 0,
     [](Phone&, const Words&) -> Action { return [](Phone& phone) { phone.dim(); }; }},
    {"wait", "SECONDS", "lets time pass", 1, 1, wait},
    {"mark", "", "has later expectations count from here", 0, 0, mark},
    {"screenshot", "FILE", "writes what is on the screen to a PNG file in PICTURES", 1, 1,
     screenshot},
};

}  // namespace

Table<Action> userCommands() {
  return commands;
}

}  // namespace sentrel::sim
