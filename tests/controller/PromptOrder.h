#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace sentrel {

/// One thing that happens to a phone with prompts, or to one process of it. What is not parted by a
/// wait may happen within one turn.
struct Happening {
  enum class Kind {
    /// A protected action is asked for, by the presenter of that number or, 2, over all; 3: by the
    /// first, where the passcode alone is not enough.
    request,
    defer,      ///< an action is set
    event,      ///< the sensor reports that number
    lateEvent,  ///< the same, told to the controller though the sensor is not listened to
    tapSwitch,  ///< between glyph and passcode
    tapCancel,
    typeRight,
    typeWrong,
    lock,
    dim,
    homeScreen,    ///< is lost, or returns
    watchAnswers,  ///< from now on: 0 no, 1 yes, 2 yes but late
    wait,          ///< that many hundredths of a second
    meet,          ///< the same, but what follows comes before what falls due then
  };

  Kind kind;
  std::int64_t number = 0;
  std::size_t place = 0;  ///< the process that it happens to
};

using PromptOrder = std::vector<Happening>;

inline std::string describe(const Happening& happening) {
  static constexpr std::array names = {"request from presenter",
                                       "defer an action",
                                       "event",
                                       "late event",
                                       "tap the switch button",
                                       "tap Cancel",
                                       "type the passcode",
                                       "type another",
                                       "lock",
                                       "dim",
                                       "the home screen goes or returns",
                                       "watch answers",
                                       "wait (1/100 s)",
                                       "meet what is due in (1/100 s)"};
  return "process " + std::to_string(happening.place) + ": " +
         names.at(static_cast<std::size_t>(happening.kind)) + " " +
         std::to_string(happening.number);
}

inline std::string describe(const PromptOrder& order) {
  std::string text;
  for (const Happening& happening : order)
    text += "  " + describe(happening) + "\n";
  return text;
}

/// An order that begins with a request and goes on as it likes.
inline PromptOrder randomOrder(std::mt19937_64& random, std::size_t places) {
  using Kind = Happening::Kind;
  // As often as they are named.
  static constexpr std::array kinds = {
      Kind::request,   Kind::request,   Kind::request,   Kind::defer,      Kind::defer,
      Kind::event,     Kind::event,     Kind::event,     Kind::event,      Kind::lateEvent,
      Kind::tapSwitch, Kind::tapSwitch, Kind::tapCancel, Kind::tapCancel,  Kind::typeRight,
      Kind::typeWrong, Kind::lock,      Kind::dim,       Kind::homeScreen, Kind::watchAnswers,
      Kind::wait,      Kind::wait,      Kind::wait,      Kind::meet,       Kind::meet,
      Kind::meet};
  static constexpr std::array<std::int64_t, 16> events = {3, 3, 3, 0,  1,  2,  4,  5,
                                                          6, 7, 9, 10, 12, 13, 28, -1};
  static constexpr std::array<std::int64_t, 12> waits = {0,  0,  0,  5,  10, 15,
                                                         35, 40, 50, 70, 75, 310};
  const auto below = [&random](std::size_t count) { return random() % count; };
  // Most of what happens, happens to one process.
  const std::size_t main = below(places);
  PromptOrder order{{Kind::request, static_cast<std::int64_t>(below(4)), main},
                    {Kind::wait, waits[below(waits.size())]}};
  for (std::size_t left = 2 + below(8); left > 0; --left) {
    const Kind kind = kinds[below(kinds.size())];
    std::int64_t number = 0;
    if (kind == Kind::request) number = static_cast<std::int64_t>(below(4));
    if (kind == Kind::event || kind == Kind::lateEvent) number = events[below(events.size())];
    if (kind == Kind::watchAnswers) number = static_cast<std::int64_t>(below(3));
    if (kind == Kind::wait || kind == Kind::meet) number = waits[below(waits.size())];
    order.push_back({kind, number, below(2) == 0 ? main : below(places)});
  }
  return order;
}

/// The shortest order to be had by leaving out one happening after the other, as long as what is
/// left `fails`.
inline PromptOrder shortest(PromptOrder order,
                            const std::function<bool(const PromptOrder&)>& fails) {
  for (std::size_t place = order.size(); place-- > 0;) {
    PromptOrder shorter = order;
    shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(place));
    if (!fails(shorter)) continue;
    order = std::move(shorter);
    place = order.size();
  }
  return order;
}

}  // namespace sentrel
