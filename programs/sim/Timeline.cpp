#include "programs/sim/Timeline.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "programs/sim/ShownPrompt.h"

namespace sentrel::sim {

Timeline::Timeline(Phone& phone, std::ostream& out)
    : phone_(phone), out_(out), start_(phone.device().time().now()), printed_(phone.everything()) {
  phone_.setOnMoment([this] { look(); });
}

Timeline::~Timeline() {
  phone_.setOnMoment({});
}

void Timeline::printCommand(const std::string& text) {
  out_ << "> " << text << '\n';
}

void Timeline::print(const std::string& text) {
  std::ostringstream time;
  time << std::fixed << std::setprecision(3) << std::setw(10)
       << (phone_.device().time().now() - start_).count();
  out_ << time.str() << "  " << text << '\n';
}

void Timeline::look() {
  lookAtRequests();
  lookAtLines(phone_.device().journal().lines(), printed_.actions, "phone: ");
  lookAtLines(phone_.logLines(), printed_.logged, "log: ");
  lookAtPrompts();
  lookAtPasscodeScreen();
  lookAtNotifications();
  lookAtFront();
}

void Timeline::lookAtRequests() {
  const Requests& requests = phone_.requests();
  for (; requests_ < requests.size(); ++requests_) {
    print("request " + std::to_string(requests_ + 1) + ": " + requests[requests_].what);
    outcomes_.push_back(0);
  }
  for (std::size_t i = 0; i < requests.size(); ++i)
    for (const auto& outcomes = requests[i].outcomes; outcomes_[i] < outcomes.size();)
      print("request " + std::to_string(i + 1) + " is " + describe(outcomes[outcomes_[i]++]));
}

void Timeline::lookAtNotifications() {
  const auto& posted = phone_.device().darwin().posted();
  for (; printed_.posted < posted.size(); ++printed_.posted)
    print("posted: " + posted[printed_.posted].name);
}

void Timeline::lookAtLines(const std::vector<std::string>& lines, std::size_t& printed,
                           const char* what) {
  for (; printed < lines.size(); ++printed)
    print(what + lines[printed]);
}

std::vector<Timeline::Prompt> Timeline::prompts() {
  std::vector<Prompt> found;
  for (const ShownPrompt& prompt : shownPrompts(phone_)) {
    const std::string where =
        prompt.process == &phone_.homeScreen() ? "" : " in " + prompt.process->identifier();
    found.push_back({"\"" + prompt.title + "\"" + where + ", " + modeOf(prompt) + ", buttons " +
                         buttonsOf(prompt),
                     prompt.glyphState ? std::to_string(*prompt.glyphState) : "none"});
  }
  return found;
}

void Timeline::lookAtPrompts() {
  const auto now = prompts();
  const auto before = std::exchange(prompts_, now);
  const auto has = [](const std::vector<Prompt>& prompts, const Prompt& prompt) {
    return std::ranges::find(prompts, prompt.face, &Prompt::face) != prompts.end();
  };
  for (const Prompt& prompt : before)
    if (!has(now, prompt)) print("prompt gone: " + prompt.face);
  for (const Prompt& prompt : now) {
    const auto same = std::ranges::find(before, prompt.face, &Prompt::face);
    if (same == before.end())
      print("prompt shown: " + prompt.face + ", glyph " + prompt.glyph);
    else if (same->glyph != prompt.glyph)
      print("glyph " + same->glyph + " -> " + prompt.glyph);
  }
}

void Timeline::lookAtPasscodeScreen() {
  PhoneProcess& current = phone_.current();
  PasscodeHost* host = current.passcodeHost();
  const std::string seen =
      host ? current.run([host] { return describe(host->look()); }) : std::string();
  if (seen != std::exchange(passcodeScreen_, seen))
    print(seen.empty() ? "passcode screen gone" : "passcode screen: " + seen);
}

void Timeline::lookAtFront() {
  const std::string front = phone_.device().applications().front().value_or("home");
  if (front != std::exchange(front_, front)) print("at the front: " + front);
  const bool isLocked = phone_.device().lock().isLocked();
  if (isLocked != std::exchange(isLocked_, isLocked)) print(isLocked ? "locked" : "unlocked");
}

}  // namespace sentrel::sim
