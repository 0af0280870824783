#include <benchmark/benchmark.h>

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

constexpr int protectedCount = 300;

std::string identifier(int number) {
  return "com.vendor" + std::to_string(number % 40) + ".application" + std::to_string(number);
}

PropertyList::Array identifiers() {
  PropertyList::Array result;
  for (int i = 0; i < protectedCount; ++i)
    result.emplace_back(identifier(i));
  return result;
}

/// A home-screen process with 300 items in every set, no network joined and no session open.
class HomeScreen {
 public:
  explicit HomeScreen(PropertyList::Dictionary more = {}) {
    namespace keys = settings_keys;
    for (std::string_view key : {keys::enabled, keys::appSwitcher, keys::photosProtected,
                                 keys::callerIDOn, keys::callerIDRemoveFromLockScreen})
      more.emplace(key, true);
    for (std::string_view key : {keys::applications, keys::notificationApps, keys::settingsBundles,
                                 keys::flipSwitches, keys::controlCenter})
      more.emplace(key, identifiers());
    device_.files().put(std::string(settingsFilePath), std::move(more));
  }

  SNSettings& settings() { return process_->process().settings(); }

 private:
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_ =
      device_.launch(std::string(springBoardBundleIdentifier));
  Process::Scope scope_{process_->process()};
};

/// The texts to ask about, in turn, so that no answer is learnt by heart.
class Turns {
 public:
  explicit Turns(std::string_view suffix = {}) {
    for (int i = 0; i < protectedCount; ++i)
      texts_.push_back(identifier(i * 7 % protectedCount) + std::string(suffix));
  }

  const std::string& next() {
    if (++turn_ == texts_.size()) turn_ = 0;
    return texts_[turn_];
  }

 private:
  std::vector<std::string> texts_;
  std::size_t turn_ = 0;
};

void bareSetLookUp(benchmark::State& state) {
  std::unordered_set<std::string> set;
  for (int i = 0; i < protectedCount; ++i)
    set.insert(identifier(i));
  Turns turns;
  for (auto _ : state)
    benchmark::DoNotOptimize(set.contains(turns.next()));
}
BENCHMARK(bareSetLookUp);

using Question = bool (*)(const SNSettings&, const std::string&);

void question(benchmark::State& state, Question ask) {
  HomeScreen homeScreen;
  const SNSettings& settings = homeScreen.settings();
  Turns turns;
  for (auto _ : state)
    benchmark::DoNotOptimize(ask(settings, turns.next()));
}

BENCHMARK_CAPTURE(question, isAppProtected,
                  [](const SNSettings& s, const std::string& id) { return s.isAppProtected(id); });
BENCHMARK_CAPTURE(question, isSystemServiceProtected, [](const SNSettings& s,
                                                         const std::string& id) {
  return s.isSystemServiceProtected(id);
});
BENCHMARK_CAPTURE(question, isAppSwitcherProtected, [](const SNSettings& s, const std::string&) {
  return s.isAppSwitcherProtected();
});

}  // namespace
}  // namespace sentrel
