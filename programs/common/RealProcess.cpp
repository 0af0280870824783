#include "programs/common/RealProcess.h"

#include <cstdio>

#include "device/real/RealParts.h"
#include "device/simulated/DeviceRootReader.h"
#include "device/simulated/SimulatedWiFi.h"
#include "device/storage/SpareDescriptor.h"
#include "programs/common/CommandLine.h"

namespace sentrel::programs {
namespace {

std::shared_ptr<bus::BusConnection> connect(const char* program,
                                            const std::shared_ptr<loop::RunLoop>& loop,
                                            const std::string& address) {
  bus::BusConnection::Options options;
  if (!address.empty()) options.address = address;
  // Not the reason: it is told in the words, and the language, of others.
  options.onLost = [program, wanted = !address.empty()](const std::string&) {
    if (wanted)
      std::fprintf(stderr, "%s: the bus of the home screen is gone: nothing is answered or heard\n",
                   program);
  };
  return std::make_shared<bus::BusConnection>(loop, options);
}

}  // namespace

RealProcess::RealProcess(const char* program, const std::string& bundleIdentifier,
                         const std::string& root, const std::string& busAddress)
    : loop_(std::make_shared<loop::RunLoop>()) {
  const bool isSpringBoard = bundleIdentifier == springBoardBundleIdentifier;
  // Before the bus takes its descriptors: there may be few.
  storage::SpareDescriptor::ofProcess();
  simulated::DeviceRootReader reader{storage::DeviceRoot(root)};
  reader.fill(device_);
  connection_ = connect(program, loop_, busAddress);
  Platform platform;
  device_.addCommonParts(platform);
  if (isSpringBoard) device_.addSpringBoardClasses(platform);
  if (bundleIdentifier == sharingDaemonBundleIdentifier) device_.addSharingDaemonClasses(platform);
  platform.mainBundle = reader.mainBundle(bundleIdentifier);
  platform.wifi = std::make_shared<simulated::SimulatedWiFi>(device_.sharedWiFi(), isSpringBoard);
  platform.operationQueues = std::make_shared<simulated::SimulatedOperationQueues>(loop_);
  platform.localAuthentication = simulated::makeLocalAuthentication(device_.sharedSensor(), loop_);
  real::addRealParts(platform, root, loop_, connection_);
  process_ = std::make_unique<Process>(std::move(platform));
  Process::setMain(process_.get());
  for (const std::string& complaint : reader.complaints())
    std::fprintf(stderr, "%s: %s\n", program, complaint.c_str());
  if (!reader.isComplete()) throw ProgramError("the device root " + root + " could not be read");
}

RealProcess::~RealProcess() = default;

}  // namespace sentrel::programs
