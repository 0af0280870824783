// Applications, folders and services.

#include <utility>

#include "programs/sim/RequestKinds.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::sim {
namespace {

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

constexpr RequestKind kinds[] = {
    {"launch", "BUNDLE-ID", "opens an application", 1, 1, launch},
    {"defer", "BUNDLE-ID", "asks, with the launch as the action that waits for success", 1, 1,
     defer},
    {"open-folder", "NAME", "opens a folder of the home screen", 1, 1, openFolder},
    {"service", "SERVICE", "uses a service of an application", 1, 1, useService},
    {"notifications", "BUNDLE-ID", "reads an application's notifications", 1, 1, readNotifications},
};

}  // namespace

Table<Ask> applicationRequests() {
  return kinds;
}

}  // namespace sentrel::sim
