#include "programs/common/RealProcess.h"

#include <cstdio>

#include "device/bus/BusMessageChannel.h"
#include "device/bus/BusNotificationCenter.h"
#include "device/bus/BusXpc.h"
#include "device/loop/LocalNotificationCenter.h"
#include "device/loop/SystemClock.h"
#include "device/simulated/DeviceRootReader.h"
#include "device/simulated/SimulatedWiFi.h"
#include "device/storage/PlistFiles.h"
#include "device/storage/RootedFiles.h"

namespace sentrel::programs {
namespace {

std::shared_ptr<bus::BusConnection> connect(const char* program,
                                            const std::shared_ptr<loop::RunLoop>& loop,
                                            const std::string& address) {
  bus::BusConnection::Options options;
  if (!address.empty()) options.address = address;
  options.onLost = [program, wanted = !address.empty()](const std::string& reason) {
    if (wanted)
      std::fprintf(stderr,
                   "%s: the bus of the home screen is gone (%s): nothing is answered or heard\n",
                   program, reason.c_str());
  };
  return std::make_shared<bus::BusConnection>(loop, options);
}

}  // namespace

RealProcess::RealProcess(const char* program, const std::string& bundleIdentifier,
                         const std::string& root, const std::string& busAddress)
    : loop_(std::make_shared<loop::RunLoop>()), connection_(connect(program, loop_, busAddress)) {
  const bool isSpringBoard = bundleIdentifier == springBoardBundleIdentifier;
  simulated::DeviceRootReader reader{storage::DeviceRoot(root)};
  reader.fill(device_);
  Platform platform;
  device_.addCommonParts(platform);
  if (isSpringBoard) device_.addSpringBoardClasses(platform);
  if (bundleIdentifier == sharingDaemonBundleIdentifier) device_.addSharingDaemonClasses(platform);
  platform.mainBundle = reader.mainBundle(bundleIdentifier);
  platform.wifi = std::make_shared<simulated::SimulatedWiFi>(device_.sharedWiFi(), isSpringBoard);
  addRealParts(platform, root);
  process_ = std::make_unique<Process>(std::move(platform));
  Process::setMain(process_.get());
  for (const std::string& complaint : reader.complaints())
    std::fprintf(stderr, "%s: %s\n", program, complaint.c_str());
}

void RealProcess::addRealParts(Platform& platform, const std::string& root) const {
  const storage::DeviceRoot deviceRoot(root);
  const auto center = [this](bus::BusNotificationKind kind) {
    return std::make_shared<bus::BusNotificationCenter>(connection_, kind);
  };
  platform.clock = std::make_shared<loop::SystemClock>();
  platform.mainQueue = loop_;
  platform.operationQueues = std::make_shared<simulated::SimulatedOperationQueues>(loop_);
  platform.localAuthentication = simulated::makeLocalAuthentication(device_.sharedSensor(), loop_);
  platform.files = std::make_shared<storage::RootedFiles>(deviceRoot);
  platform.propertyListFiles = std::make_shared<storage::PlistFiles>(deviceRoot);
  platform.darwinCenter = center(bus::BusNotificationKind::darwin);
  platform.distributedCenter = center(bus::BusNotificationKind::distributed);
  platform.localCenter = std::make_shared<loop::LocalNotificationCenter>(loop_);
  platform.messageChannel = std::make_shared<bus::BusMessageChannel>(connection_);
  platform.xpc = std::make_shared<bus::BusXpc>(connection_);
}

RealProcess::~RealProcess() = default;

}  // namespace sentrel::programs
