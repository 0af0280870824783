#include "device/simulated/SimulatedProcess.h"

#include "device/simulated/SimulatedDevice.h"
#include "device/simulated/SimulatedMainQueue.h"

namespace sentrel::simulated {
namespace {

using Kind = SimulatedNotificationCenter::Kind;

}  // namespace

SimulatedProcess::SimulatedProcess(SimulatedDevice& device, const std::string& bundleIdentifier)
    : mainBundle_(std::make_shared<SimulatedMainBundle>(bundleIdentifier)),
      wifi_(std::make_shared<SimulatedWiFi>(device.wifi_,
                                            bundleIdentifier == springBoardBundleIdentifier)) {
  auto queue = std::make_shared<SimulatedMainQueue>(*device.timeline_);
  const auto center = [&queue](std::shared_ptr<NotificationHub> hub, Kind kind) {
    return std::make_shared<SimulatedNotificationCenter>(std::move(hub), queue, kind);
  };
  Platform platform;
  device.addCommonParts(platform);
  if (bundleIdentifier == springBoardBundleIdentifier) device.addSpringBoardClasses(platform);
  if (bundleIdentifier == sharingDaemonBundleIdentifier) device.addSharingDaemonClasses(platform);
  platform.mainBundle = mainBundle_;
  platform.mainQueue = queue;
  platform.operationQueues = std::make_shared<SimulatedOperationQueues>(queue);
  platform.localAuthentication = makeLocalAuthentication(device.sharedSensor(), queue);
  platform.darwinCenter = center(device.darwin_, Kind::darwin);
  platform.distributedCenter = center(device.distributed_, Kind::distributed);
  platform.localCenter = center(std::make_shared<NotificationHub>(), Kind::local);
  platform.messageChannel =
      std::make_shared<SimulatedMessageChannel>(device.messages_, bundleIdentifier);
  platform.xpc = std::make_shared<SimulatedXpc>(device.xpc_, queue, bundleIdentifier);
  platform.wifi = wifi_;
  process_ = std::make_shared<Process>(std::move(platform));
  queue->setProcess(process_);
}

}  // namespace sentrel::simulated
