#pragma once

#include <memory>
#include <string>

#include "device/bus/BusMessageChannel.h"
#include "device/bus/BusNotificationCenter.h"
#include "device/bus/BusXpc.h"
#include "device/loop/LocalNotificationCenter.h"
#include "device/loop/SystemClock.h"
#include "device/storage/GLibCaseMapping.h"
#include "device/storage/OpenSslCryptography.h"
#include "device/storage/PlistFiles.h"
#include "device/storage/RootedFiles.h"
#include "sentrel/platform/Platform.h"

namespace sentrel::real {

/// What a process has that is real on every machine: the files under `root`, the cipher, the case
/// mapping, the clock, the queue, and what goes over the bus. Here, and not in RealPlatform.cpp,
/// for processes that draw nothing and link no screen.
inline void addRealParts(Platform& platform, const std::string& root,
                         const std::shared_ptr<loop::RunLoop>& loop,
                         const std::shared_ptr<bus::BusConnection>& connection) {
  const storage::DeviceRoot deviceRoot(root);
  const auto center = [&connection](bus::BusNotificationKind kind) {
    return std::make_shared<bus::BusNotificationCenter>(connection, kind);
  };
  platform.clock = std::make_shared<loop::SystemClock>();
  platform.mainQueue = loop;
  platform.files = std::make_shared<storage::RootedFiles>(deviceRoot);
  platform.propertyListFiles = std::make_shared<storage::PlistFiles>(deviceRoot);
  platform.cryptography = std::make_shared<storage::OpenSslCryptography>();
  platform.caseMapping = std::make_shared<storage::GLibCaseMapping>();
  platform.darwinCenter = center(bus::BusNotificationKind::darwin);
  platform.distributedCenter = center(bus::BusNotificationKind::distributed);
  platform.localCenter = std::make_shared<loop::LocalNotificationCenter>();
  platform.messageChannel = std::make_shared<bus::BusMessageChannel>(connection);
  platform.xpc = std::make_shared<bus::BusXpc>(connection);
}

}  // namespace sentrel::real
