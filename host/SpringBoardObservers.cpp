#include "host/SpringBoardObservers.h"

#include "sentrel/Process.h"
#include "sentrel/biometrics/SNTouchIDManager.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::host {
namespace {

struct Reaction {
  std::string_view name;
  void (*act)();
};

constexpr Reaction reactions[] = {
    {notifications::lockUI, [] { SNUtils::lockUI(); }},
    {notifications::forceLockUI, [] { SNUtils::lockUI(/*force=*/true); }},
    {notifications::startBioMetricAssertion,
     [] { SNUtils::startBioMetricsResource(/*shouldAddDarwinObserver=*/false); }},
    {notifications::stopBioMetricAssertion, [] { SNUtils::stopBioMetricsResource(); }},
    {notifications::resetBioMetricAssertion, [] { SNUtils::resetBioMetricsResourceCache(); }},
};

}  // namespace

SpringBoardObservers::SpringBoardObservers() {
  // Applications have the home screen take the sensor in its monitor's name.
  SNTouchIDManager::sharedManager();
  NotificationCenter& center = *Process::current().platform().darwinCenter;
  for (const Reaction& reaction : reactions)
    observations_.push_back(center.addObserver(
        std::string(reaction.name), [act = reaction.act](const Notification&) { act(); }));
}

}  // namespace sentrel::host
