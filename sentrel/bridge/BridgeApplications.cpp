#include "sentrel/bridge/Ask.h"

namespace sentrel {
namespace {

std::shared_ptr<SBApplication> findApplication(const SBApplicationController& controller,
                                               const std::string& identifier) {
  if (controller.applicationWithDisplayIdentifier)
    return controller.applicationWithDisplayIdentifier(identifier);
  return controller.applicationWithBundleIdentifier
             ? controller.applicationWithBundleIdentifier(identifier)
             : nullptr;
}

std::optional<std::string> nameOf(const DisplayItem& item) {
  return item.displayName ? item.displayName() : std::nullopt;
}

bool isName(const std::optional<std::string>& name) {
  return name && !name->empty();
}

}  // namespace

std::optional<std::string> Bridge::appName(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return std::nullopt;
  if (!isSpringBoard()) return ask<messages::AppName>(*this, bundleIdentifier);
  const auto& controller = platform_.applicationController;
  const auto application = controller ? findApplication(*controller, bundleIdentifier) : nullptr;
  return application ? nameOf(*application) : std::nullopt;
}

bool Bridge::isSystemApplication(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return false;
  const auto& controller = platform_.applicationController;
  if (!controller) return ask<messages::IsSystemApplication>(*this, bundleIdentifier);
  const auto application = findApplication(*controller, bundleIdentifier);
  return application && application->isSystemApplication();
}

bool Bridge::isApplication(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return false;
  const auto& controller = platform_.applicationController;
  if (!controller) return ask<messages::IsApplication>(*this, bundleIdentifier);
  try {
    return findApplication(*controller, bundleIdentifier) != nullptr;
  } catch (const PlatformException&) {
    return false;
  }
}

bool Bridge::isHiddenApp(const std::string& bundleIdentifier) {
  if (bundleIdentifier.empty()) return false;
  if (!platform_.applicationController)
    return ask<messages::IsHiddenApplication>(*this, bundleIdentifier);
  return platform_.qvUtils && platform_.qvUtils->isHiddenApp(bundleIdentifier);
}

std::optional<std::string> Bridge::displayName(const DisplayItem& item) {
  if (auto name = nameOf(item); isName(name)) return name;
  const auto application = item.application ? item.application() : nullptr;
  if (!application) return std::nullopt;
  auto name = nameOf(*application);
  return isName(name) ? name : std::nullopt;
}

}  // namespace sentrel
