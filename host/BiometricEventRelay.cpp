#include "host/BiometricEventRelay.h"

#include "sentrel/Process.h"
#include "sentrel/bridge/Notifications.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel::host {
namespace {

class Poster final : public BiometricObserver {
 public:
  void biometricKitInterfaceObserveEvent(const std::shared_ptr<BiometricInterface>&,
                                         BiometricEvent event) override {
    PropertyList::Dictionary payload;
    payload.emplace(notifications::pearlIDEventCodeKey, event);
    SNUtils::postCFDistributedNotification(notifications::pearlID, payload);
  }
  std::string description() const override { return "<BiometricEventRelay>"; }
};

}  // namespace

BiometricEventRelay::BiometricEventRelay() : observer_(std::make_shared<Poster>()) {
  const auto& resource = Process::current().platform().biometricResource;
  if (resource) resource->addObserver(observer_);
}

}  // namespace sentrel::host
