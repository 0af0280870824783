#include "programs/common/WatchCommands.h"

#include <charconv>
#include <cstdint>
#include <vector>

#include "programs/common/CommandLine.h"
#include "programs/common/Words.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::programs {
namespace {

using simulated::SimulatedWatch;
using Words = std::vector<std::string>;

template <class Integer>
Integer numberOf(const std::string& word) {
  Integer number{};
  const char* const end = word.data() + word.size();
  const auto read = std::from_chars(word.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end) throw UsageError("no number: " + word);
  return number;
}

bool yesOrNo(const std::string& word) {
  if (word != "yes" && word != "no") throw UsageError("neither yes nor no: " + word);
  return word == "yes";
}

/// A command of fixed words: what it is called, how many words follow, and what it does with them.
struct Command {
  const char* name;
  std::size_t count;
  void (*obey)(SimulatedWatch& watch, const Words& values);
};

constexpr Command commands[] = {
    {"wrist", 1,
     [](auto& watch, auto& values) { watch.wristState = numberOf<std::int64_t>(values[0]); }},
    {"lock", 1,
     [](auto& watch, auto& values) { watch.lockState = numberOf<std::int32_t>(values[0]); }},
    {"nearby", 1, [](auto& watch, auto& values) { watch.isNearby = yesOrNo(values[0]); }},
    {"active", 1, [](auto& watch, auto& values) { watch.isActive = yesOrNo(values[0]); }},
    {"connected", 1, [](auto& watch, auto& values) { watch.isConnected = yesOrNo(values[0]); }},
    {"rssi", 2,
     [](auto& watch, auto& values) {
       const auto first = numberOf<std::int64_t>(values[0]);
       watch.secondRSSI = numberOf<std::int64_t>(values[1]);
       watch.firstRSSI = first;
     }},
    {"pair", 0, [](auto& watch, auto&) { watch.isPaired = true; }},
    {"unpair", 0, [](auto& watch, auto&) { watch.isPaired = false; }},
};

std::string show(const SimulatedWatch& watch) {
  PropertyList::Dictionary shown{{"paired", watch.isPaired},
                                 {"wrist", watch.wristState},
                                 {"lock", watch.lockState},
                                 {"nearby", watch.isNearby},
                                 {"active", watch.isActive},
                                 {"connected", watch.isConnected},
                                 {"rssi", PropertyList::Array{watch.firstRSSI, watch.secondRSSI}},
                                 {"wake-ups", watch.wakeUps().size()},
                                 {"taps", watch.taps().size()}};
  if (watch.name) shown.emplace("name", *watch.name);
  return describe(shown);
}

}  // namespace

const char* const watchCommandsUsage =
    "  wrist STATE          its wrist state; 3 is worn\n"
    "  lock STATE           its lock state; 0 is unlocked\n"
    "  nearby yes|no        whether it is nearby\n"
    "  active yes|no        whether it is active\n"
    "  connected yes|no     whether it is connected\n"
    "  rssi FIRST SECOND    its two signal values in dBm\n"
    "  name TEXT            its name\n"
    "  unpair, pair         no watch is paired, or one is again\n"
    "  show                 prints all of it, the wake-ups and the taps so far\n";

std::string obeyWatchCommand(SimulatedWatch& watch, const std::string& line) {
  constexpr std::string_view name = "name ";
  if (line == "show") return show(watch);
  if (line.starts_with(name)) {
    watch.name = line.substr(name.size());
    return "OK";
  }
  Words words = wordsOf(line);
  for (const Command& command : commands) {
    if (words.empty() || words[0] != command.name) continue;
    words.erase(words.begin());
    if (words.size() != command.count)
      throw UsageError("wrong number of words after " + std::string(command.name));
    command.obey(watch, words);
    return "OK";
  }
  throw UsageError("unknown command \"" + line + "\"");
}

}  // namespace sentrel::programs
