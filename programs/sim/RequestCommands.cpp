// What the user does that may need authentication. Where a request tests nothing itself, the
// hooking side asks the settings first and goes on at once where nothing is protected.

#include <array>
#include <utility>

#include "programs/sim/Command.h"
#include "sentrel/bridge/SNUtils.h"
#include "sentrel/controller/SentrelController.h"
#include "sentrel/settings/SNSettings.h"

namespace sentrel::sim {

void requireInstalled(Phone& phone, const std::string& bundleIdentifier) {
  if (!phone.device().applications().find(bundleIdentifier))
    throw UsageError("no application " + bundleIdentifier + " is installed");
}

namespace {

using Completion = SentrelController::Completion;
using Presenter = SentrelController::Presenter;

constexpr const char* settingsApplication = "com.apple.Preferences";

SentrelController& controller() {
  return SentrelController::sharedInstance();
}

const SNSettings& settings() {
  return SNSettings::sharedSettings();
}

/// A request made inside `place`.
using Ask = std::function<void(Phone& phone, PhoneProcess& place)>;

/// What is done once it is allowed, for the record.
std::function<void()> noteOf(Phone& phone, std::string text) {
  return [&phone, text = std::move(text)] { phone.device().journal().record(text); };
}

void askIf(bool isProtected, const Completion& completion, const std::function<void()>& ask) {
  if (isProtected)
    ask();
  else
    completion(/*authenticated=*/false, /*allowed=*/true);
}

// --- Applications, folders, services -------------------------------------------------------------

Ask launch(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  return [identifier = words[0]](Phone& phone, PhoneProcess& place) {
    const auto completion =
        phone.request("launch " + identifier, [&phone, identifier] { phone.open(identifier); });
    controller().requiresAuthentication(identifier, place.presenter(), completion);
  };
}

class LaunchInvocation final : public Invocation {
 public:
  LaunchInvocation(Phone& phone, std::string identifier)
      : phone_(phone), identifier_(std::move(identifier)) {}

  std::optional<std::string> argumentBundleIdentifier() const override { return identifier_; }
  void invoke() override {
    phone_.device().journal().record("invoke the deferred launch of " + identifier_);
  }

 private:
  Phone& phone_;
  std::string identifier_;
};

Ask defer(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  return [identifier = words[0]](Phone& phone, PhoneProcess& place) {
    controller().setInvocation(std::make_shared<LaunchInvocation>(phone, identifier));
    controller().requiresAuthenticationForItem(SNUtils::appName(identifier),
                                               SNUtils::authenticationMessage(), place.presenter(),
                                               phone.request("defer " + identifier, {}));
  };
}

std::shared_ptr<SBFolder> folderNamed(Phone& phone, const std::string& name) {
  for (const auto& folder : phone.device().homeScreen().folders())
    if (folder->displayName() == name) return folder;
  throw UsageError("no folder is called \"" + name + "\"");
}

Ask openFolder(Phone& asked, const Words& words) {
  folderNamed(asked, words[0]);
  return [name = words[0]](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthenticationForFolder(
        folderNamed(phone, name), place.presenter(),
        phone.request("open-folder " + name, noteOf(phone, "open the folder " + name)));
  };
}

Ask useService(Phone&, const Words& words) {
  return [service = words[0]](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthenticationForSystemService(
        service, place.presenter(),
        phone.request("service " + service, noteOf(phone, "use the service " + service)));
  };
}

Ask readNotifications(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  return [identifier = words[0]](Phone& phone, PhoneProcess& place) {
    const auto completion = phone.request("notifications " + identifier,
                                          noteOf(phone, "show the notifications of " + identifier));
    askIf(settings().isNotificationsAppProtected(identifier), completion, [&] {
      controller().requiresAuthenticationForLockscreenNotifications(place.presenter(), completion);
    });
  };
}

// --- Settings panes and switches -----------------------------------------------------------------

class Pane final : public PSSpecifier {
 public:
  Pane(std::string name, std::string identifier)
      : name_(std::move(name)), identifier_(std::move(identifier)) {}

  std::optional<std::string> name() const override { return name_; }
  std::optional<std::string> identifier() const override { return identifier_; }

 private:
  std::string name_;
  std::string identifier_;
};

void askForPane(const std::shared_ptr<Pane>& pane, const std::optional<std::string>& title,
                const Presenter& presenter, const Completion& completion) {
  askIf(settings().isSpecifierProtected(*pane->name()), completion, [&] {
    if (title)
      controller().requiresAuthenticationForSpecifier(pane, title, presenter, completion);
    else
      controller().requiresAuthenticationForSpecifier(pane, presenter, completion);
  });
}

Ask openPane(Phone&, const Words& words) {
  const auto slash = words[0].find('/');
  if (slash == std::string::npos || slash == 0 || slash + 1 == words[0].size())
    throw UsageError("\"" + words[0] + "\" is not NAME/IDENTIFIER");
  const auto pane = std::make_shared<Pane>(words[0].substr(0, slash), words[0].substr(slash + 1));
  const auto title = words.size() == 2 ? std::optional(words[1]) : std::nullopt;
  return [pane, title](Phone& phone, PhoneProcess&) {
    PhoneProcess* place = phone.application(settingsApplication);
    if (!place) throw NotPossible(std::string(settingsApplication) + " does not run");
    const auto completion = phone.request("open-pane " + *pane->name(),
                                          noteOf(phone, "open the pane " + *pane->name()));
    place->run([&] { askForPane(pane, title, place->presenter(), completion); });
  };
}

Ask flip(Phone&, const Words& words) {
  return [identifier = words[0]](Phone& phone, PhoneProcess& place) {
    const auto completion =
        phone.request("flip " + identifier, noteOf(phone, "flip " + identifier));
    SNUtils::setRequestingFromCC(true);
    askIf(settings().isFlipSwitchProtected(identifier), completion, [&] {
      controller().requiresAuthenticationForFlipSwitch(identifier, place.presenter(), completion);
    });
    SNUtils::setRequestingFromCC(false);
  };
}

// --- The phone's own features --------------------------------------------------------------------

struct Feature {
  const char* name;
  bool (SNSettings::*isProtected)() const;
  void (SentrelController::*ask)(const Presenter& delegate, Completion completion);
  void (*onAllowed)(Phone& phone);
};

constexpr Feature appSwitcher{
    "app-switcher", &SNSettings::isAppSwitcherProtected,
    &SentrelController::requiresAuthenticationForAppSwitcher,
    [](Phone& phone) { phone.device().journal().record("show the app switcher"); }};
constexpr Feature arrangeIcons{
    "arrange-icons", &SNSettings::isAppArrangementProtected,
    &SentrelController::requiresAuthenticationForAppArrangement,
    [](Phone& phone) { phone.device().journal().record("let the icons be arranged"); }};
/// There is no setting for deletion alone.
constexpr Feature deleteApp{
    "delete-app", &SNSettings::isAppArrangementProtected,
    &SentrelController::requiresAuthenticationForAppDeletion,
    [](Phone& phone) { phone.device().journal().record("delete the application"); }};
constexpr Feature photos{"photos", &SNSettings::isPhotosProtected,
                         &SentrelController::requiresAuthenticationForPhotos,
                         [](Phone& phone) { phone.device().journal().record("show the photos"); }};
constexpr Feature respring{"respring", &SNSettings::isRespringProtected,
                           &SentrelController::requiresAuthenticationForRespring, [](Phone& phone) {
                             phone.device().journal().record("restart the home screen");
                             phone.restart();
                           }};
constexpr Feature reboot{"reboot", &SNSettings::isRebootProtected,
                         &SentrelController::requiresAuthenticationForReboot, [](Phone& phone) {
                           phone.homeScreen().run([] { SNUtils::reboot(); });
                           phone.restart();
                         }};

template <const Feature& feature>
Ask useFeature(Phone&, const Words&) {
  return [](Phone& phone, PhoneProcess& place) {
    const auto completion = phone.request(feature.name, [&phone] { feature.onAllowed(phone); });
    askIf((settings().*feature.isProtected)(), completion,
          [&] { (controller().*feature.ask)(place.presenter(), completion); });
  };
}

// --- Anything with a title -----------------------------------------------------------------------

Ask showItem(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthenticationForItem(words[0], words[1], place.presenter(),
                                               phone.request("item " + words[0], {}));
  };
}

Ask showTitled(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess& place) {
    controller().requiresAuthentication(words[0], words[1], place.presenter(),
                                        phone.request("titled " + words[0], {}));
  };
}

Ask showOverAll(Phone&, const Words& words) {
  return [words](Phone& phone, PhoneProcess&) {
    controller().requiresAuthentication(words[0], words[1],
                                        phone.request("over-all " + words[0], {}));
  };
}

// --- The table -----------------------------------------------------------------------------------

using RequestKind = Row<Ask>;

constexpr RequestKind kinds[] = {
    {"launch", "BUNDLE-ID", "opens an application", 1, 1, launch},
    {"defer", "BUNDLE-ID", "asks, with the launch as the action that waits for success", 1, 1,
     defer},
    {"open-folder", "NAME", "opens a folder of the home screen", 1, 1, openFolder},
    {"service", "SERVICE", "uses a service of an application", 1, 1, useService},
    {"notifications", "BUNDLE-ID", "reads an application's notifications", 1, 1, readNotifications},
    {"open-pane", "NAME/IDENTIFIER [TITLE]", "opens a pane of the running settings application", 1,
     2, openPane},
    {"flip", "SWITCH", "flips a switch of the control centre", 1, 1, flip},
    {"app-switcher", "", "enters the app switcher", 0, 0, useFeature<appSwitcher>},
    {"arrange-icons", "", "rearranges the icons", 0, 0, useFeature<arrangeIcons>},
    {"delete-app", "", "deletes an application", 0, 0, useFeature<deleteApp>},
    {"photos", "", "opens the photos", 0, 0, useFeature<photos>},
    {"respring", "", "restarts the home screen", 0, 0, useFeature<respring>},
    {"reboot", "", "restarts the phone", 0, 0, useFeature<reboot>},
    {"item", "TITLE MESSAGE", "asks for anything; no session is recorded", 2, 2, showItem},
    {"titled", "TITLE MESSAGE", "asks for anything, remembered by its title", 2, 2, showTitled},
    {"over-all", "TITLE MESSAGE", "the same, over whatever is on the screen", 2, 2, showOverAll},
};

Action insideHomeScreen(Ask ask) {
  return [ask = std::move(ask)](Phone& phone) {
    phone.homeScreen().run([&] { ask(phone, phone.homeScreen()); });
  };
}

Action insideApplication(Phone& asked, const Words& words) {
  requireInstalled(asked, words[0]);
  const Words request(words.begin() + 1, words.end());
  const RequestKind* kind = findRow<Ask>(kinds, request[0]);
  if (!kind) throw UsageError("\"" + request[0] + "\" is no request");
  return [identifier = words[0], ask = prepareRow(*kind, asked, request)](Phone& phone) {
    PhoneProcess* application = phone.application(identifier);
    if (!application) throw NotPossible(identifier + " does not run");
    application->run([&] { ask(phone, *application); });
  };
}

template <std::size_t index>
Action prepareKind(Phone& phone, const Words& words) {
  return insideHomeScreen(kinds[index].prepare(phone, words));
}

template <std::size_t... index>
auto commandsFor(std::index_sequence<index...>) {
  return std::array{Command{kinds[index].name, kinds[index].arguments, kinds[index].help,
                            kinds[index].fewest, kinds[index].most, prepareKind<index>}...,
                    Command{"inside", "BUNDLE-ID REQUEST...",
                            "makes any of these requests inside a running application", 2,
                            anyNumber, insideApplication}};
}

}  // namespace

std::span<const Command> requestCommands() {
  static const auto commands = commandsFor(std::make_index_sequence<std::size(kinds)>());
  return commands;
}

}  // namespace sentrel::sim
