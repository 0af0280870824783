#include "device/simulated/SimulatedProcess.h"

#include "device/simulated/SimulatedDevice.h"
#include "device/simulated/SimulatedMainQueue.h"
#include "device/storage/GLibCaseMapping.h"
#include "device/storage/OpenSslCryptography.h"

namespace sentrel::simulated {
namespace {

using Payload = SimulatedNotificationCenter::Payload;

}  // namespace

SimulatedProcess::SimulatedProcess(SimulatedDevice& device, const std::string& bundleIdentifier)
    : mainBundle_(std::make_shared<SimulatedMainBundle>(bundleIdentifier)),
      wifi_(std::make_shared<SimulatedWiFi>(device.wifi_,
                                            bundleIdentifier == springBoardBundleIdentifier)) {
  auto queue = std::make_shared<SimulatedMainQueue>(*device.timeline_);
  const auto center = [&queue](std::shared_ptr<NotificationHub> hub, Payload payload) {
    return std::make_shared<SimulatedNotificationCenter>(std::move(hub), queue, payload);
  };
  Platform platform;
  platform.mainBundle = mainBundle_;
  platform.clock = device.timeline_;
  platform.mainQueue = queue;
  platform.files = device.files_;
  platform.propertyListFiles = device.files_;
  platform.cryptography = std::make_shared<storage::OpenSslCryptography>();
  platform.caseMapping = std::make_shared<storage::GLibCaseMapping>();
  platform.darwinCenter = center(device.darwin_, Payload::dropped);
  platform.distributedCenter = center(device.distributed_, Payload::carried);
  platform.localCenter = center(std::make_shared<NotificationHub>(), Payload::carried);
  platform.messageChannel =
      std::make_shared<SimulatedMessageChannel>(device.messages_, bundleIdentifier);
  platform.wifi = wifi_;
  process_ = std::make_shared<Process>(std::move(platform));
  queue->setProcess(process_);
}

}  // namespace sentrel::simulated
