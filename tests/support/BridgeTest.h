#pragma once

#include <string>
#include <vector>

#include "host/SpringBoardObservers.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/bridge/TextFormat.h"
#include "tests/support/TwoProcesses.h"

namespace sentrel {

using Lines = std::vector<std::string>;

/// Two processes whose platforms a test takes parts from, on a device whose journal it reads.
class BridgeTest : public TwoProcesses {
 protected:
  /// The home-screen process's platform, and the application's.
  Platform& home() { return springBoard->process().platform(); }
  Platform& away() { return app->process().platform(); }

  /// Switches logging on everywhere. Only the application's lines arrive anywhere.
  void enableLogging() { useSettings({{"SentrelEnableLogging", true}}); }

  /// What the application logged since the last call, without its own name in front.
  Lines takeAppLog() {
    const std::string sender = formatText("%@ < - > ", {appIdentifier});
    Lines lines;
    for (const std::string& line : std::exchange(logLines, {}))
      lines.push_back(line.starts_with(sender) ? line.substr(sender.size())
                                               : "not from it: " + line);
    return lines;
  }

  /// The names of the requests sent since the last call.
  Lines takeRequests() {
    Lines names;
    for (const simulated::SentMessage& message : device.messages().sent())
      names.push_back(message.name);
    device.messages().forgetSent();
    return names;
  }

  Lines postedNames() {
    Lines names;
    for (const Notification& notification : device.darwin().posted())
      names.push_back(notification.name);
    return names;
  }

  /// The application anew, on another system.
  void restartApp(const std::string& version, bool hasFaceID = true) {
    device.system().version = version;
    device.sensor().isPearlIDCapable = hasFaceID;
    device.sensor().isTouchIDCapable = !hasFaceID;
    app = device.launch(std::string(appIdentifier));
  }

  simulated::SimulatedBiometricResource& resource() {
    return static_cast<simulated::SimulatedBiometricResource&>(*home().biometricResource);
  }

  /// Another home-screen process, in which nothing was asked yet.
  std::unique_ptr<simulated::SimulatedProcess> freshSpringBoard() {
    return device.launch(std::string(springBoardBundleIdentifier));
  }
};

}  // namespace sentrel
