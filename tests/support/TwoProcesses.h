#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "device/simulated/SimulatedDevice.h"
#include "host/SpringBoardResponder.h"
#include "sentrel/bridge/Messages.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel {

/// One device with a home-screen process, which answers every request, and one application. The
/// test itself runs inside the home-screen process unless it enters the other one:
///
///     inApp([] { EXPECT_TRUE(SNSettings::sharedSettings().isAppProtected()); });
class TwoProcesses : public ::testing::Test {
 protected:
  static constexpr std::string_view appIdentifier = "com.example.app";

  TwoProcesses() {
    device.messages().setResponder(
        std::string(messageChannelName), springBoard->weakProcess(),
        host::SpringBoardResponder([this](const std::string& line) { logLines.push_back(line); }));
  }

  /// Puts a settings file on the device and has both processes load it.
  void useSettings(PropertyList::Dictionary file) {
    device.files().put(std::string(settingsFilePath), std::move(file));
    reloadEverywhere();
  }

  void reloadEverywhere() {
    settings().reloadSettings();
    app->run([] { SNSettings::sharedSettings().reloadSettings(); });
  }

  /// What the settings file holds now; empty when there is none.
  PropertyList::Dictionary settingsFile() {
    return device.files()
        .readDictionary(std::string(settingsFilePath))
        .dictionary.value_or(PropertyList::Dictionary());
  }

  /// How often the Darwin notification `name` was posted so far.
  std::size_t posted(std::string_view name) {
    std::size_t count = 0;
    for (const Notification& notification : device.darwin().posted())
      if (notification.name == name) ++count;
    return count;
  }

  /// The settings of the home-screen process.
  SNSettings& settings() { return springBoard->process().settings(); }

  template <class Action>
  decltype(auto) inApp(Action action) {
    return app->run(std::move(action));
  }

  simulated::SimulatedDevice device;
  std::unique_ptr<simulated::SimulatedProcess> springBoard =
      device.launch(std::string(springBoardBundleIdentifier));
  std::unique_ptr<simulated::SimulatedProcess> app = device.launch(std::string(appIdentifier));

  /// What the processes wrote to the log, as the responder received it.
  std::vector<std::string> logLines;

 private:
  Process::Scope home_{springBoard->process()};
};

}  // namespace sentrel
