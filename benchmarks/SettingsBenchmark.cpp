#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {
namespace {

using Array = PropertyList::Array;
using Dictionary = PropertyList::Dictionary;

/// A home-screen process on a device of its own, with no network joined and no session open.
class HomeScreen {
 public:
  explicit HomeScreen(Dictionary file) {
    file.emplace(settings_keys::enabled, true);
    device.files().put(std::string(settingsFilePath), std::move(file));
  }

  SNSettings& settings() { return process_->process().settings(); }

  simulated::SimulatedDevice device;

 private:
  std::unique_ptr<simulated::SimulatedProcess> process_ =
      device.launch(std::string(springBoardBundleIdentifier));
  Process::Scope scope_{process_->process()};
};

// --- Questions about one item among 300 ------------------------------------------------------

constexpr int protectedCount = 300;

std::string identifier(int number) {
  return "com.vendor" + std::to_string(number % 40) + ".application" + std::to_string(number);
}

Array identifiers() {
  Array result;
  for (int i = 0; i < protectedCount; ++i)
    result.emplace_back(identifier(i));
  return result;
}

/// Every feature on and 300 items in every set, a network trusted, and sessions remembered if asked
/// for.
Dictionary everythingProtected(bool sessions) {
  namespace keys = settings_keys;
  Dictionary file{{std::string(keys::trustedNetworks), Array{"home"}}};
  file.emplace(keys::remember, sessions);
  file.emplace(keys::rememberTime, 5);
  for (std::string_view key :
       {keys::appSwitcher, keys::iconArrangement, keys::respring, keys::reboot, keys::callerIDOn,
        keys::callerIDRemoveFromLockScreen, keys::callerIDHideOnAttentionAway})
    file.emplace(key, true);
  for (std::string_view key : {keys::applications, keys::notificationApps, keys::settingsBundles,
                               keys::flipSwitches, keys::controlCenter})
    file.emplace(key, identifiers());
  return file;
}

/// The items to ask about, in turn.
class Turns {
 public:
  Turns() {
    for (int i = 0; i < protectedCount; ++i)
      texts_.push_back(identifier(i * 7 % protectedCount));
  }

  const std::string& next() {
    if (++turn_ == texts_.size()) turn_ = 0;
    return texts_[turn_];
  }

 private:
  std::vector<std::string> texts_;
  std::size_t turn_ = 0;
};

/// What every question below is measured against.
void bareSetLookUp(benchmark::State& state) {
  std::unordered_set<std::string> set;
  for (int i = 0; i < protectedCount; ++i)
    set.insert(identifier(i));
  Turns turns;
  for (auto _ : state)
    benchmark::DoNotOptimize(set.contains(turns.next()));
}
BENCHMARK(bareSetLookUp);

/// `ask` is a function of its own for each question: called directly, as the set is above.
template <class Ask>
void askInTurn(benchmark::State& state, Ask ask, bool sessions) {
  HomeScreen homeScreen(everythingProtected(sessions));
  for (const char* library : {"Flipswitch.dylib", "FlipControlCenter.dylib"})
    homeScreen.device.files().touch("/Library/MobileSubstrate/DynamicLibraries/" +
                                    std::string(library));
  const SNSettings& settings = homeScreen.settings();
  Turns turns;
  for (auto _ : state)
    benchmark::DoNotOptimize(ask(settings, turns.next()));
}

template <class Ask>
void registerQuestion(const std::string& name, Ask ask) {
  for (const bool sessions : {false, true})
    benchmark::RegisterBenchmark(((sessions ? "sessionsOn/" : "sessionsOff/") + name).c_str(),
                                 askInTurn<Ask>, ask, sessions);
}

const int questionsRegistered = [] {
  using Settings = const SNSettings&;
  using Item = const std::string&;
  registerQuestion("isAppProtected/ignoreAllOther", [](Settings s, Item item) {
    return s.isAppProtected(item, /*ignoreAllOther=*/true);
  });
  registerQuestion("isAppProtected", [](Settings s, Item item) { return s.isAppProtected(item); });
  registerQuestion("isNotificationsAppProtected",
                   [](Settings s, Item item) { return s.isNotificationsAppProtected(item); });
  registerQuestion("isSpecifierProtected",
                   [](Settings s, Item item) { return s.isSpecifierProtected(item); });
  registerQuestion("isFlipSwitchProtected",
                   [](Settings s, Item item) { return s.isFlipSwitchProtected(item); });
  registerQuestion("isControlCenterItemProtected",
                   [](Settings s, Item item) { return s.isControlCenterItemProtected(item); });
  registerQuestion("isSystemServiceProtected",
                   [](Settings s, Item item) { return s.isSystemServiceProtected(item); });
  registerQuestion("isAppSwitcherProtected",
                   [](Settings s, Item) { return s.isAppSwitcherProtected(); });
  registerQuestion("isPhotosProtected", [](Settings s, Item) { return s.isPhotosProtected(); });
  registerQuestion("isCallerIDProtected", [](Settings s, Item) { return s.isCallerIDProtected(); });
  registerQuestion("isHideCallerInfoOnAttentionAway",
                   [](Settings s, Item) { return s.isHideCallerInfoOnAttentionAway(); });
  registerQuestion("isUnlockWithAppleWatch",
                   [](Settings s, Item) { return s.isUnlockWithAppleWatch(); });
  return 0;
}();

// --- Folders: what grows is said last, records or icons ---------------------------------------

PropertyList folderRecord(const std::string& name, int firstIcon, int iconCount) {
  Array icons;
  for (int i = firstIcon; i < firstIcon + iconCount; ++i)
    icons.emplace_back(Dictionary{{"SentrelFolderDisplayName", "Application " + std::to_string(i)},
                                  {"SentrelBundleIdentifier", identifier(i)}});
  return Dictionary{{"SentrelFolderDisplayName", name}, {"SentrelAllIcons", std::move(icons)}};
}

/// Records of one name, each with the same icons as the folder asked about but for the last, so
/// that each is compared to its end; only the last record matches.
Array nearMatches(int recordCount, int iconCount) {
  Array records;
  for (int i = 1; i < recordCount; ++i) {
    PropertyList record = folderRecord("Folder", 0, iconCount - 1);
    Array& icons = *record.as<Dictionary>()->at("SentrelAllIcons").as<Array>();
    icons.emplace_back(Dictionary{{"SentrelFolderDisplayName", "Other"},
                                  {"SentrelBundleIdentifier", "com.other" + std::to_string(i)}});
    records.push_back(std::move(record));
  }
  records.push_back(folderRecord("Folder", 0, iconCount));
  return records;
}

/// Records of different names, the matching one last, as on a real device.
Array differentFolders(int recordCount, int iconCount) {
  Array records;
  for (int i = 1; i < recordCount; ++i)
    records.push_back(folderRecord("Folder " + std::to_string(i), i * iconCount, iconCount));
  records.push_back(folderRecord("Folder", 0, iconCount));
  return records;
}

using Records = Array (*)(int recordCount, int iconCount);

void matchFolder(benchmark::State& state, Records records) {
  const auto recordCount = static_cast<int>(state.range(0));
  const auto iconCount = static_cast<int>(state.range(1));
  HomeScreen homeScreen({{std::string(settings_keys::folders), records(recordCount, iconCount)}});
  const PropertyList query = folderRecord("Folder", 0, iconCount);
  if (homeScreen.settings().matchedFolderDataIndex(query) != recordCount - 1)
    state.SkipWithError("the folder did not match its record");
  for (auto _ : state)
    benchmark::DoNotOptimize(homeScreen.settings().matchedFolderDataIndex(query));
}

void folderSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"records", "icons"});
  for (const int records : {50, 200, 800})
    benchmark->Args({records, 40});
  for (const int icons : {10, 160, 640})
    benchmark->Args({200, icons});
}
BENCHMARK_CAPTURE(matchFolder, differentNames, differentFolders)->Apply(folderSizes);
BENCHMARK_CAPTURE(matchFolder, oneName, nearMatches)->Apply(folderSizes);

/// The application lies in the folder that is stored first, which is looked at last; the home
/// screen shows that folder alone.
void isFolderProtectedForApp(benchmark::State& state) {
  const auto recordCount = static_cast<int>(state.range(0));
  const auto iconCount = static_cast<int>(state.range(1));
  Array records = differentFolders(recordCount, iconCount);
  std::ranges::reverse(records);
  HomeScreen homeScreen({{std::string(settings_keys::folders), std::move(records)}});
  const auto folder = homeScreen.device.homeScreen().addFolder("Folder", {});
  for (int i = 0; i < iconCount; ++i)
    folder->add(simulated::makeIcon(identifier(i), "Application " + std::to_string(i)));
  const std::string asked = identifier(iconCount - 1);
  if (!homeScreen.settings().isFolderProtectedForApp(asked))
    state.SkipWithError("the application's folder is not protected");
  for (auto _ : state)
    benchmark::DoNotOptimize(homeScreen.settings().isFolderProtectedForApp(asked));
}
BENCHMARK(isFolderProtectedForApp)->Apply(folderSizes);

}  // namespace
}  // namespace sentrel
