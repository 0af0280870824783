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

ShownPrompt frontPrompt(Phone& phone) {
  const auto prompts = shownPrompts(phone);
  if (prompts.empty()) throw NotPossible("no prompt is on the screen");
  return prompts.front();
}

void show(Phone& phone, BiometricEvent result) {
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
    PhoneProcess& process = *frontPrompt(phone).process;
    const bool taken = process.run([&] { return programs::type(digits); });
    if (!taken) throw NotPossible("not every character was taken");
  };
}

Action tap(Phone&, const Words& words) {
  return [title = words[0]](Phone& phone) {
    const ShownPrompt prompt = frontPrompt(phone);
    const bool wasTapped = prompt.process->run([&] { return programs::tapButton(title); });
    if (!wasTapped)
      throw NotPossible("no button \"" + title +
                        "\" can be tapped; there are: " + buttonsOf(prompt));
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
    {"type", "DIGITS", "types into the prompt", 1, 1, typeDigits},
    {"tap", "BUTTON", "taps a button of the prompt by its title", 1, 1, tap},
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
