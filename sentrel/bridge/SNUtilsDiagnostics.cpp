#include <utility>

#include "sentrel/bridge/Current.h"
#include "sentrel/bridge/SNUtils.h"

namespace sentrel {
namespace {

constexpr std::string_view messageLogLibrary = "/usr/lib/libmessagelog.dylib";

/// The entry point `name` of the logging library as a function of type `Function`, or null.
template <class Function>
Function* messageLogFunction(const std::string& name) {
  auto& library = currentState().messageLog;
  if (!library)
    library = currentPlatform().libraries->open(std::string(messageLogLibrary),
                                                DynamicLibraries::Binding::lazy);
  return library ? reinterpret_cast<Function*>(library->symbol(name)) : nullptr;
}

void writeToSystemLog(std::string_view format, std::initializer_list<TextArgument> arguments = {}) {
  currentPlatform().systemLog->write(formatText(format, arguments));
}

std::optional<std::string> describe(const std::optional<PlatformError>& error) {
  if (!error) return std::nullopt;
  return formatText("%@ (%ld): %@", {error->domain, error->code, error->localizedDescription});
}

std::shared_ptr<PresenceDetectOperation> createPresenceDetectOperation(
    std::optional<PlatformError>& error) {
  const auto& manager = currentPlatform().deviceManager;
  if (!manager) return nullptr;
  const auto descriptors = manager->availableDevices();
  if (descriptors.empty()) return nullptr;
  const auto device = manager->deviceWithDescriptor(descriptors.front(), error);
  return device ? device->createPresenceDetectOperationWithError(error) : nullptr;
}

}  // namespace

void SNUtils::fullLogging(bool flag) {
  const auto setEnabled = messageLogFunction<void(bool)>("MLSetFullLoggingEnabled");
  if (!setEnabled)
    return writeToSystemLog("################# Couldn't get MLSetFullLoggingEnabled");
  setEnabled(flag);
  writeToSystemLog("################# Full Logging Enabled");
}

void SNUtils::selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
                               const std::string& selectorRegEx) {
  if (flag) {
    const auto enable = messageLogFunction<void(std::int64_t, const char*, const char*)>(
        "MLEnableSelectiveLogging");
    if (!enable) return writeToSystemLog("################# Couldn't get MLEnableSelectiveLogging");
    enable(type, regEx.c_str(), selectorRegEx.c_str());
    return writeToSystemLog(
        "################# Selective Logging Enabled for type: %ld, type: %@, selectorRegEx: %@",
        {type, regEx, selectorRegEx});
  }
  const auto disable = messageLogFunction<void()>("MLDisableSelectiveLogging");
  if (!disable) return writeToSystemLog("################# Couldn't get MLDisableSelectiveLogging");
  disable();
  writeToSystemLog("################# Selective Logging disabled");
}

void SNUtils::testLaunchApplication(const std::string& bundleIdentifier) {
  if (const auto& service = currentPlatform().openApplicationService)
    service->openApplication(bundleIdentifier, {});
}

void SNUtils::startPresenceDetectOperation(const Observer& delegate) {
  stopPresenceDetectOperation();
  std::optional<PlatformError> error;
  const auto operation = createPresenceDetectOperation(error);
  currentState().presenceDetectOperation = operation;
  bool success = false;
  if (operation) {
    operation->setDelegate(delegate);
    success = operation->startWithError(error);
  }
  logMessage("###################### success: %d, Error: %@", success, describe(error));
}

void SNUtils::startPresenceDetectOperation() {
  startPresenceDetectOperation(Process::current().biometricMonitor());
}

void SNUtils::stopPresenceDetectOperation() {
  if (const auto operation = std::exchange(currentState().presenceDetectOperation, nullptr))
    operation->cancel();
}

}  // namespace sentrel
