#include "programs/common/WatchCommands.h"

#include <cstdint>
#include <optional>

#include "programs/common/CommandLine.h"
#include "programs/common/CommandTable.h"
#include "programs/common/Numbers.h"
#include "programs/common/Words.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::programs {
namespace {

using simulated::SimulatedWatch;

constexpr const char* obeyed = "OK";

template <class Integer>
void read(const std::string& word, Integer& number) {
  const auto value = numberOf<Integer>(word);
  if (!value) throw UsageError("no number: " + word);
  number = *value;
}

void read(const std::string& word, bool& flag) {
  if (word != "yes" && word != "no") throw UsageError("neither yes nor no: " + word);
  flag = word == "yes";
}

void read(const std::string& word, std::optional<std::string>& text) {
  text = word;
}

template <auto member>
std::string store(SimulatedWatch& watch, const Words& values) {
  read(values[0], watch.*member);
  return obeyed;
}

std::string storeSignal(SimulatedWatch& watch, const Words& values) {
  std::int64_t first = 0;
  read(values[0], first);
  read(values[1], watch.secondRSSI);
  watch.firstRSSI = first;
  return obeyed;
}

template <bool isPaired>
std::string pair(SimulatedWatch& watch, const Words&) {
  watch.isPaired = isPaired;
  return obeyed;
}

std::string show(SimulatedWatch& watch, const Words&) {
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

constexpr Command<std::string(SimulatedWatch& watch, const Words& values)> commands[] = {
    {"wrist", "STATE", "its wrist state; 3 is worn", 1, 1, store<&SimulatedWatch::wristState>},
    {"lock", "STATE", "its lock state; 0 is unlocked", 1, 1, store<&SimulatedWatch::lockState>},
    {"nearby", "yes|no", "whether it is nearby", 1, 1, store<&SimulatedWatch::isNearby>},
    {"active", "yes|no", "whether it is active", 1, 1, store<&SimulatedWatch::isActive>},
    {"connected", "yes|no", "whether it is connected", 1, 1, store<&SimulatedWatch::isConnected>},
    {"rssi", "FIRST SECOND", "its two signal values in dBm", 2, 2, storeSignal},
    {"name", "TEXT", "its name", 1, 1, store<&SimulatedWatch::name>},
    {"unpair", "", "no watch is paired", 0, 0, pair<false>},
    {"pair", "", "one is again", 0, 0, pair<true>},
    {"show", "", "prints all of it, the wake-ups and the taps so far", 0, 0, show},
};

constexpr CommandTable table = commands;

/// A name is the rest of its line, with the spaces in it.
Words watchWords(const std::string& line) {
  constexpr std::string_view name = "name ";
  return line.starts_with(name) ? Words{"name", line.substr(name.size())} : wordsOf(line);
}

}  // namespace

std::string watchCommandsHelp() {
  return table.help(/*column=*/23);
}

std::string obeyWatchCommand(SimulatedWatch& watch, const std::string& line) {
  Words words = watchWords(line);
  const auto* command = words.empty() ? nullptr : table.find(words[0]);
  if (!command) throw UsageError("unknown command \"" + line + "\"");
  words.erase(words.begin());
  if (!command->takes(words.size()))
    throw UsageError("wrong number of words after " + std::string(command->name));
  return command->run(watch, words);
}

}  // namespace sentrel::programs
