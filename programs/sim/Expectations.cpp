// What a script may expect. Each reads the state of the phone and says what it saw.

#include <algorithm>

#include "programs/sim/Command.h"
#include "programs/sim/ShownPrompt.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/controller/SentrelController.h"

namespace sentrel::sim {
namespace {

constexpr std::string_view notificationPrefix = "com.quorvin.sentrel";

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

/// A check of the frontmost prompt; without one it fails.
Check ofPrompt(std::function<Verdict(const ShownPrompt& prompt)> check) {
  return [check = std::move(check)](Phone& phone) -> Verdict {
    const auto prompts = shownPrompts(phone);
    return prompts.empty() ? Verdict{false, "no prompt"} : check(prompts.front());
  };
}

Check prompt(Phone&, const Words& words) {
  return ofPrompt([words](const ShownPrompt& prompt) -> Verdict {
    return {words.empty() || prompt.title == words[0], "the prompt " + quoted(prompt.title)};
  });
}

Check prompts(Phone&, const Words& words) {
  return [count = countOf(words[0])](Phone& phone) -> Verdict {
    const std::size_t shown = shownPrompts(phone).size();
    return {shown == count, std::to_string(shown)};
  };
}

Check message(Phone&, const Words& words) {
  return ofPrompt([text = words[0]](const ShownPrompt& prompt) -> Verdict {
    return {prompt.message == text, quoted(prompt.message)};
  });
}

Check mode(Phone&, const Words& words) {
  constexpr const char* choices[] = {"glyph", "passcode"};
  return ofPrompt(
      [isPasscode = choiceOf(words[0], choices) == 1](const ShownPrompt& prompt) -> Verdict {
        return {prompt.isPasscodeShown == isPasscode, modeOf(prompt)};
      });
}

Check button(Phone&, const Words& words) {
  return ofPrompt([title = words[0]](const ShownPrompt& prompt) -> Verdict {
    return {std::ranges::find(prompt.buttons, title) != prompt.buttons.end(),
            "the buttons " + buttonsOf(prompt)};
  });
}

Check glyph(Phone&, const Words& words) {
  return ofPrompt([state = wholeNumberOf(words[0])](const ShownPrompt& prompt) -> Verdict {
    return {prompt.glyphState == state,
            prompt.glyphState ? std::to_string(*prompt.glyphState) : "no glyph"};
  });
}

Check typed(Phone&, const Words& words) {
  return ofPrompt([count = countOf(words[0])](const ShownPrompt& prompt) -> Verdict {
    return {prompt.typedCount == count, std::to_string(prompt.typedCount)};
  });
}

/// "authenticated" or "denied of 2"; without a number the last request is meant.
Check outcome(Phone&, const Words& words) {
  constexpr const char* choices[] = {"allowed", "authenticated", "denied", "pending"};
  choiceOf(words[0], choices);
  if (words.size() != 1 && (words.size() != 3 || words[1] != "of"))
    throw UsageError("expected: outcome OUTCOME [of NUMBER]");
  const std::size_t number = words.size() == 3 ? countOf(words[2]) : 0;
  if (words.size() == 3 && number == 0) throw UsageError("requests are counted from 1");
  return [expected = words[0], number](Phone& phone) -> Verdict {
    const Requests& requests = phone.requests();
    const std::size_t which = number ? number : requests.size();
    if (which == 0 || which > requests.size())
      return {false, std::to_string(requests.size()) + " requests"};
    const std::string seen = describe(requests[which - 1]);
    return {seen == expected, seen};
  };
}

/// At least one, or exactly as many as are given behind the first word.
bool isCount(std::size_t seen, const Words& words, std::size_t index) {
  return words.size() > index ? seen == countOf(words[index]) : seen > 0;
}

Check posted(Phone&, const Words& words) {
  if (words.size() > 1) countOf(words[1]);
  return [words](Phone& phone) -> Verdict {
    const auto& all = phone.device().darwin().posted();
    const auto count = static_cast<std::size_t>(
        std::count_if(all.begin() + static_cast<std::ptrdiff_t>(phone.mark().posted), all.end(),
                      [&](const Notification& notification) {
                        return notification.name == words[0] ||
                               notification.name == std::string(notificationPrefix) + words[0];
                      }));
    return {isCount(count, words, 1), std::to_string(count) + " times"};
  };
}

bool holds(const std::vector<std::string>& lines, std::size_t from, const std::string& text) {
  return std::any_of(lines.begin() + static_cast<std::ptrdiff_t>(from), lines.end(),
                     [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

Check logged(Phone&, const Words& words) {
  return [text = words[0]](Phone& phone) -> Verdict {
    const auto& lines = phone.logLines();
    return {holds(lines, phone.mark().logged, text),
            std::to_string(lines.size() - phone.mark().logged) + " lines without it"};
  };
}

Check did(Phone&, const Words& words) {
  return [text = words[0]](Phone& phone) -> Verdict {
    const auto& lines = phone.device().journal().lines();
    const bool found = holds(lines, phone.mark().actions, text);
    return {found, found ? "it" : "nothing of the kind"};
  };
}

Check vibrated(Phone&, const Words& words) {
  if (!words.empty()) countOf(words[0]);
  return [words](Phone& phone) -> Verdict {
    const std::size_t count =
        phone.device().audioServices().played().size() - phone.mark().vibrations;
    return {isCount(count, words, 0), std::to_string(count) + " times"};
  };
}

Check watchTaps(Phone&, const Words& words) {
  return [expected = countOf(words[0])](Phone& phone) -> Verdict {
    const std::size_t count = phone.device().watch().taps().size() - phone.mark().taps;
    return {count == expected, std::to_string(count)};
  };
}

template <bool isLocked>
Check lockState(Phone&, const Words&) {
  return [](Phone& phone) -> Verdict {
    const bool seen = phone.device().lock().isLocked();
    return {seen == isLocked, seen ? "locked" : "unlocked"};
  };
}

Check front(Phone& asked, const Words& words) {
  if (words[0] != "home") requireInstalled(asked, words[0]);
  return [expected = words[0]](Phone& phone) -> Verdict {
    const std::string seen = phone.device().applications().front().value_or("home");
    return {seen == expected, seen};
  };
}

Check session(Phone&, const Words& words) {
  constexpr const char* choices[] = {"open", "closed"};
  return [item = words[0], isOpen = choiceOf(words[1], choices) == 0](Phone& phone) -> Verdict {
    const bool seen = phone.homeScreen().run(
        [&] { return SentrelController::sharedInstance().shouldIgnoreAuthentication(item); });
    return {seen == isOpen, seen ? "open" : "closed"};
  };
}

Check sensor(Phone&, const Words& words) {
  constexpr const char* choices[] = {"held", "free"};
  return [isHeld = choiceOf(words[0], choices) == 0](Phone& phone) -> Verdict {
    const bool seen = phone.isSensorHeld();
    return {seen == isHeld, seen ? "held" : "free"};
  };
}

constexpr Expectation table[] = {
    {"prompt", "[TITLE]", "the frontmost prompt, with that title", 0, 1, prompt},
    {"prompts", "NUMBER", "how many prompts are on the screen", 1, 1, prompts},
    {"message", "TEXT", "what the prompt says under its title", 1, 1, message},
    {"mode", "glyph|passcode", "what the prompt asks for", 1, 1, mode},
    {"button", "TITLE", "a button of the prompt", 1, 1, button},
    {"glyph", "STATE", "the state of the prompt's glyph", 1, 1, glyph},
    {"typed", "NUMBER", "how many digits the prompt holds", 1, 1, typed},
    {"outcome", "OUTCOME [of NUMBER]", "the one answer to a request, else to the last", 1, 3,
     outcome},
    {"posted", "NAME [NUMBER]", "a notification since the mark, with or without its prefix", 1, 2,
     posted},
    {"logged", "TEXT", "a log line of an application since the mark that holds TEXT", 1, 1, logged},
    {"did", "TEXT", "an action of the phone since the mark that holds TEXT", 1, 1, did},
    {"vibrated", "[NUMBER]", "vibrations since the mark", 0, 1, vibrated},
    {"watch-taps", "NUMBER", "taps of the watch since the mark", 1, 1, watchTaps},
    {"locked", "", "the phone is locked", 0, 0, lockState<true>},
    {"unlocked", "", "the phone is unlocked", 0, 0, lockState<false>},
    {"front", "BUNDLE-ID|home", "what is at the front", 1, 1, front},
    {"session", "ITEM open|closed", "whether an unlock session covers it", 2, 2, session},
    {"sensor", "held|free", "whether anybody holds the sensor", 1, 1, sensor},
};

}  // namespace

Table<Check> expectations() {
  return table;
}

}  // namespace sentrel::sim
