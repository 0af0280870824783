// The phone's own features.

#include "programs/sim/RequestKinds.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::sim {
namespace {

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

constexpr RequestKind kinds[] = {
    {"app-switcher", "", "enters the app switcher", 0, 0, useFeature<appSwitcher>},
    {"arrange-icons", "", "rearranges the icons", 0, 0, useFeature<arrangeIcons>},
    {"delete-app", "", "deletes an application", 0, 0, useFeature<deleteApp>},
    {"photos", "", "opens the photos", 0, 0, useFeature<photos>},
    {"respring", "", "restarts the home screen", 0, 0, useFeature<respring>},
    {"reboot", "", "restarts the phone", 0, 0, useFeature<reboot>},
};

}  // namespace

Table<Ask> featureRequests() {
  return kinds;
}

}  // namespace sentrel::sim
