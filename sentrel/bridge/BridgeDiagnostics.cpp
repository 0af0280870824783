#include <utility>

#include "sentrel/bridge/Bridge.h"
#include "sentrel/bridge/BridgeState.h"

namespace sentrel {
namespace {

constexpr std::string_view messageLogLibrary = "/usr/lib/libmessagelog.dylib";

std::optional<std::string> describe(const std::optional<PlatformError>& error) {
  if (!error) return std::nullopt;
  return formatText("%@ (%ld): %@", {error->domain, error->code, error->localizedDescription});
}

}  // namespace

/// The entry point `name` of the logging library as a function of type `Function`, or null.
template <class Function>
Function* Bridge::messageLogFunction(const std::string& name) {
  auto& library = state().messageLog;
  if (!library)
    library =
        platform_.libraries->open(std::string(messageLogLibrary), DynamicLibraries::Binding::lazy);
  return library ? reinterpret_cast<Function*>(library->symbol(name)) : nullptr;
}

void Bridge::writeToSystemLog(std::string_view format,
                              std::initializer_list<TextArgument> arguments) {
  platform_.systemLog->write(formatText(format, arguments));
}

std::shared_ptr<PresenceDetectOperation> Bridge::createPresenceDetectOperation(
    std::optional<PlatformError>& error) {
  const auto& manager = platform_.deviceManager;
  if (!manager) return nullptr;
  const auto descriptors = manager->availableDevices();
  if (descriptors.empty()) return nullptr;
  const auto device = manager->deviceWithDescriptor(descriptors.front(), error);
  return device ? device->createPresenceDetectOperationWithError(error) : nullptr;
}

void Bridge::fullLogging(bool flag) {
  const auto setEnabled = messageLogFunction<void(bool)>("MLSetFullLoggingEnabled");
  if (!setEnabled)
    return writeToSystemLog("################# Couldn't get MLSetFullLoggingEnabled");
  setEnabled(flag);
  writeToSystemLog("################# Full Logging Enabled");
}

void Bridge::selectiveLogging(bool flag, std::int64_t type, const std::string& regEx,
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

void Bridge::testLaunchApplication(const std::string& bundleIdentifier) {
  if (const auto& service = platform_.openApplicationService)
    service->openApplication(bundleIdentifier, {});
}

void Bridge::startPresenceDetectOperation(const Observer& delegate) {
  stopPresenceDetectOperation();
  std::optional<PlatformError> error;
  const auto operation = createPresenceDetectOperation(error);
  state().presenceDetectOperation = operation;
  bool success = false;
  if (operation) {
    operation->setDelegate(delegate);
    success = operation->startWithError(error);
  }
  logMessage("###################### success: %d, Error: %@", success, describe(error));
}

void Bridge::startPresenceDetectOperation() {
  startPresenceDetectOperation(defaultObserver_());
}

void Bridge::stopPresenceDetectOperation() {
  if (const auto operation = std::exchange(state().presenceDetectOperation, nullptr))
    operation->cancel();
}

}  // namespace sentrel
