// The passcode screen of what is at the front: how it comes up, and what its owner has chosen.

#include "programs/common/Hands.h"
#include "programs/sim/Command.h"

namespace sentrel::sim {
namespace {

/// Something that is done inside the process at the front.
Action withHost(std::function<void(PasscodeHost& host)> action) {
  return [action = std::move(action)](Phone& phone) {
    PasscodeHost& host = phone.passcodeHost();
    phone.current().run([&] { action(host); });
  };
}

using ShowFlow = void (PasscodeFlow::*)(const std::shared_ptr<UIViewController>&, bool);

bool isModal(const Words& words) {
  constexpr const char* choices[] = {"modal", "pushed"};
  return words.size() < 2 || choiceOf(words[1], choices) == 0;
}

void requirePlace(const PasscodeHost& host, bool asModal) {
  if (!asModal && !host.hasNavigation())
    throw NotPossible("the home screen has no navigation to push a screen on");
}

Action passcodeScreen(Phone&, const Words& words) {
  constexpr const char* flows[] = {"enable", "change", "turn-off"};
  constexpr ShowFlow shows[] = {&PasscodeFlow::showForEnablingPasscodeInViewController,
                                &PasscodeFlow::showForChangingPasscodeInViewController,
                                &PasscodeFlow::showForDisablingPasscodeInViewController};
  return [show = shows[choiceOf(words[0], flows)], asModal = isModal(words)](Phone& phone) {
    withHost([&](PasscodeHost& host) {
      requirePlace(host, asModal);
      host.prepare();
      (host.screen().*show)(host.page(), asModal);
    })(phone);
  };
}

Action lockScreen(Phone&, const Words& words) {
  return withHost([words](PasscodeHost& host) {
    host.screen().showLockScreenWithAnimation(/*animated=*/true, !words.empty(),
                                              words.empty() ? "" : words[0]);
  });
}

Action closeScreen(Phone&, const Words&) {
  return withHost([](PasscodeHost& host) { host.screen()._close(); });
}

Action form(Phone&, const Words& words) {
  constexpr const char* choices[] = {"free", "digits"};
  const bool isSimple = choiceOf(words[0], choices) == 1;
  return withHost([isSimple, asModal = isModal(words)](PasscodeHost& host) {
    requirePlace(host, asModal);
    host.screen().view();
    host.screen().setIsSimple(isSimple, host.page(), asModal);
  });
}

Action digits(Phone&, const Words& words) {
  return withHost([count = wholeNumberOf(words[0])](PasscodeHost& host) {
    host.screen().setDigitsCount(count);
  });
}

Action storage(Phone&, const Words& words) {
  constexpr const char* choices[] = {"prompt", "own"};
  return [isOwn = choiceOf(words[0], choices) == 1](Phone& phone) {
    phone.passcodeOptions().ownStorage = isOwn;
  };
}

/// What every process goes by from now on.
Action changingOptions(std::function<void(PasscodeOptions& options)> change) {
  return [change = std::move(change)](Phone& phone) {
    change(phone.passcodeOptions());
    PasscodeHost& host = phone.passcodeHost();
    phone.current().run([&] { host.takeOptions(); });
  };
}

Action limit(Phone&, const Words& words) {
  return changingOptions(
      [limit = wholeNumberOf(words[0])](auto& options) { options.limit = limit; });
}

Action lockout(Phone&, const Words& words) {
  return changingOptions(
      [rule = host::LockoutRule{wholeNumberOf(words[0]), Seconds(secondsOf(words[1]))}](
          auto& options) { options.lockout = rule; });
}

Action timer(Phone&, const Words& words) {
  return withHost([seconds = secondsOf(words[0])](PasscodeHost& host) {
    host.screen()._saveTimerDuration(seconds);
  });
}

Action fingerprint(Phone&, const Words& words) {
  return withHost([isAllowed = yesOrNo(words[0])](PasscodeHost& host) {
    host.screen().setAllowUnlockWithTouchID(isAllowed);
  });
}

/// One edit, as a paste is.
Action paste(Phone&, const Words& words) {
  return withHost([text = words[0]](PasscodeHost& host) {
    host.tapEntry();
    if (const auto field = programs::focusedField()) field->insertText(text);
  });
}

Action erase(Phone&, const Words& words) {
  return withHost([count = words.empty() ? 1 : countOf(words[0])](PasscodeHost& host) {
    host.tapEntry();
    for (std::size_t erased = 0; erased < count; ++erased)
      if (const auto field = programs::focusedField()) field->deleteBackward();
  });
}

constexpr Command commands[] = {
    {"passcode-screen", "enable|change|turn-off [modal|pushed]", "begins a settings flow", 1, 2,
     passcodeScreen},
    {"lock-screen", "[LOGOUT-TITLE]", "slides the lock screen in", 0, 1, lockScreen},
    {"close-screen", "", "has the application close it", 0, 0, closeScreen},
    {"passcode-form", "digits|free [modal|pushed]", "switches the form", 1, 2, form},
    {"passcode-digits", "NUMBER", "sets how many digits a new passcode has", 1, 1, digits},
    {"passcode-storage", "prompt|own", "the prompt's passcode, or one of any length in memory", 1,
     1, storage},
    {"passcode-limit", "NUMBER", "from which failed attempt on the application is told", 1, 1,
     limit},
    {"passcode-lockout", "ATTEMPTS SECONDS", "has attempts wait, also after a restart", 2, 2,
     lockout},
    {"passcode-timer", "SECONDS", "how long one may be away", 1, 1, timer},
    {"passcode-fingerprint", "yes|no", "whether a finger opens the lock screen", 1, 1, fingerprint},
    {"paste", "TEXT", "pastes into it", 1, 1, paste},
    {"erase", "[NUMBER]", "deletes what was typed last", 0, 1, erase},
};

// --- Expectations
// ----------------------------------------------------------------------------------

Check ofScreen(std::function<Verdict(const ShownPasscodeScreen& screen)> check) {
  return [check = std::move(check)](Phone& phone) {
    PasscodeHost& host = phone.passcodeHost();
    return check(phone.current().run([&] { return host.look(); }));
  };
}

Check ofText(std::string ShownPasscodeScreen::*text, const std::string& expected) {
  return ofScreen([text, expected](const ShownPasscodeScreen& screen) -> Verdict {
    return {screen.*text == expected, "\"" + screen.*text + "\""};
  });
}

Check ofFlag(bool ShownPasscodeScreen::*flag) {
  return ofScreen([flag](const ShownPasscodeScreen& screen) -> Verdict {
    return {screen.*flag, describe(screen)};
  });
}

Check expectFlow(Phone&, const Words& words) {
  constexpr const char* choices[] = {"lock", "enable", "change", "turn-off", "none"};
  choiceOf(words[0], choices);
  return ofText(&ShownPasscodeScreen::flow, words[0]);
}

Check expectBoxes(Phone&, const Words& words) {
  return ofScreen([filled = countOf(words[0]),
                   boxes = countOf(words[1])](const ShownPasscodeScreen& screen) -> Verdict {
    const bool isMet = !screen.isFree && screen.filled == filled && screen.boxes == boxes;
    return {isMet, std::to_string(screen.filled) + " of " + std::to_string(screen.boxes)};
  });
}

Check expectCovered(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  return [identifier = words[0]](Phone& phone) -> Verdict {
    PhoneProcess* process = phone.application(identifier);
    if (!process || !process->passcodeHost()) return {false, "no passcode screen"};
    const bool seen = process->run([&] { return process->passcodeHost()->look().isCovered; });
    return {seen, seen ? "covered" : "open"};
  };
}

Check expectStored(Phone&, const Words& words) {
  return [expected = words[0]](Phone& phone) -> Verdict {
    PasscodeHost& host = phone.passcodeHost();
    const std::string stored =
        phone.current().run([&] { return host.keeper().passcode().value_or("none"); });
    return {stored == expected, stored};
  };
}

Check expectKeyboard(Phone&, const Words& words) {
  constexpr const char* choices[] = {"digits", "letters", "none"};
  choiceOf(words[0], choices);
  return ofText(&ShownPasscodeScreen::keyboard, words[0]);
}

constexpr Expectation screenExpectations[] = {
    {"screen", "lock|enable|change|turn-off|none", "what it is up for", 1, 1, expectFlow},
    {"screen-title", "TEXT", "the title in its bar", 1, 1,
     [](Phone&, const Words& words) { return ofText(&ShownPasscodeScreen::title, words[0]); }},
    {"screen-prompt", "TEXT", "what it asks for", 1, 1,
     [](Phone&, const Words& words) { return ofText(&ShownPasscodeScreen::prompt, words[0]); }},
    {"screen-failure", "TEXT", "what it says went wrong; \"\" for nothing", 1, 1,
     [](Phone&, const Words& words) { return ofText(&ShownPasscodeScreen::failure, words[0]); }},
    {"boxes", "FILLED COUNT", "its digit boxes", 2, 2, expectBoxes},
    {"free-text", "", "it takes any text", 0, 0,
     [](Phone&, const Words&) { return ofFlag(&ShownPasscodeScreen::isFree); }},
    {"fields-hidden", "", "it waits for a finger", 0, 0,
     [](Phone&, const Words&) { return ofFlag(&ShownPasscodeScreen::isHidden); }},
    {"covered", "BUNDLE-ID", "a running application's content is hidden", 1, 1, expectCovered},
    {"keyboard", "digits|letters|none", "the keyboard of whatever is typed into", 1, 1,
     expectKeyboard},
    {"stored-passcode", "PASSCODE|none", "what the delegate has stored", 1, 1, expectStored},
};

}  // namespace

Table<Action> passcodeScreenCommands() {
  return commands;
}

Table<Check> passcodeScreenExpectations() {
  return screenExpectations;
}

}  // namespace sentrel::sim
