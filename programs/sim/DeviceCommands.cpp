// What the phone is and what surrounds it.

#include "programs/common/WatchCommands.h"
#include "programs/sim/Command.h"

namespace sentrel::sim {
namespace {

Action restarting(std::function<void(simulated::SimulatedDevice&)> change) {
  return [change = std::move(change)](Phone& phone) {
    change(phone.device());
    phone.restart();
  };
}

Action systemVersion(Phone&, const Words& words) {
  const std::string& version = words[0];
  if (version.empty() || version.find_first_not_of("0123456789.") != std::string::npos ||
      wholeNumberOf(version.substr(0, version.find('.'))) < 1)
    throw UsageError("\"" + version + "\" is no version");
  return restarting([version](auto& device) { device.system().version = version; });
}

Action sensorKind(Phone&, const Words& words) {
  constexpr const char* choices[] = {"touch", "face", "none"};
  return restarting([kind = choiceOf(words[0], choices)](auto& device) {
    device.sensor().isTouchIDCapable = kind == 0;
    device.sensor().isPearlIDCapable = kind == 1;
  });
}

Action legacyAlerts(Phone&, const Words& words) {
  return restarting([isLegacy = yesOrNo(words[0])](auto& device) {
    device.system().canUseAlertView = isLegacy;
    device.system().connectedScenes = isLegacy ? 0 : 1;
  });
}

Action deviceKind(Phone&, const Words& words) {
  constexpr const char* choices[] = {"phone", "tablet"};
  return restarting([isTablet = choiceOf(words[0], choices) == 1](auto& device) {
    device.screen().setBounds({{}, isTablet ? CGSize{768, 1024} : CGSize{375, 667}});
    device.screen().setScale(isTablet ? 1 : 2);
    device.screen().setUserInterfaceIdiom(isTablet ? UIUserInterfaceIdiom::pad
                                                   : UIUserInterfaceIdiom::phone);
  });
}

Action appearance(Phone&, const Words& words) {
  constexpr const char* choices[] = {"dark", "light"};
  return restarting([isDark = choiceOf(words[0], choices) == 0](auto& device) {
    device.screen().setUserInterfaceStyle(isDark ? UIUserInterfaceStyle::dark
                                                 : UIUserInterfaceStyle::light);
  });
}

Action devicePasscode(Phone&, const Words& words) {
  return [isSet = yesOrNo(words[0])](Phone& phone) { phone.device().lock().setPasscodeSet(isSet); };
}

Action switchTitle(Phone&, const Words& words) {
  return [words](Phone& phone) { phone.device().switchPanel().setTitle(words[0], words[1]); };
}

Action join(Phone&, const Words& words) {
  return [network = words[0]](Phone& phone) { phone.device().wifi().joined = network; };
}

Action leave(Phone&, const Words&) {
  return [](Phone& phone) { phone.device().wifi().joined.reset(); };
}

std::string lineOf(const Words& words) {
  std::string line;
  for (const std::string& word : words)
    line += (line.empty() ? "" : " ") + word;
  return line;
}

Action watch(Phone&, const Words& words) {
  simulated::SimulatedWatch trial(std::make_shared<simulated::Journal>());
  programs::obeyWatchCommand(trial, lineOf(words));
  return [line = lineOf(words)](Phone& phone) {
    programs::obeyWatchCommand(phone.device().watch(), line);
  };
}

Action rotate(Phone&, const Words& words) {
  constexpr const char* choices[] = {"portrait", "upside-down", "landscape-right",
                                     "landscape-left"};
  return [orientation = static_cast<UIInterfaceOrientation>(1 + choiceOf(words[0], choices))](
             Phone& phone) { phone.turn(orientation); };
}

Action setClock(Phone&, const Words& words) {
  const bool isBack = words[0].starts_with('-');
  const double seconds = secondsOf(isBack ? words[0].substr(1) : words[0]);
  return [offset = Seconds(isBack ? -seconds : seconds)](Phone& phone) {
    phone.device().time().setWallClock(phone.device().time().now() + offset);
  };
}

constexpr Command commands[] = {
    {"system", "VERSION", "installs a system; this and the next four restart the phone", 1, 1,
     systemVersion},
    {"sensor", "touch|face|none", "gives the phone another sensor", 1, 1, sensorKind},
    {"legacy", "yes|no", "has prompts come in the older systems' alerts", 1, 1, legacyAlerts},
    {"device", "phone|tablet", "makes it a phone or a tablet", 1, 1, deviceKind},
    {"appearance", "dark|light", "turns the light off or on", 1, 1, appearance},
    {"device-passcode", "yes|no", "whether the phone itself has a passcode", 1, 1, devicePasscode},
    {"switch-title", "SWITCH TITLE", "has the control centre know a switch by a title", 2, 2,
     switchTitle},
    {"rotate", "ORIENTATION", "turns it: portrait, upside-down, landscape-left, landscape-right", 1,
     1, rotate},
    {"clock", "[-]SECONDS", "sets its clock forward or back", 1, 1, setClock},
    {"join", "NETWORK", "joins a wireless network", 1, 1, join},
    {"leave", "", "leaves it", 0, 0, leave},
    {"watch", "PROPERTY VALUE...", "changes the paired watch, as sentrel-sharingd does", 1, 3,
     watch},
};

}  // namespace

Table<Action> deviceCommands() {
  return commands;
}

}  // namespace sentrel::sim
