#include <string>

#include "sentrel/bridge/Bridge.h"

namespace sentrel {
namespace {

std::string extensionPath(const std::string& fileName) {
  return "/Library/MobileSubstrate/DynamicLibraries/" + fileName;
}

/// The first number of the model name behind "iPhone": 10 of "iPhone10,3".
std::int64_t modelNumber(std::string platform) {
  constexpr std::string_view family = "iPhone";
  for (auto at = platform.find(family); at != std::string::npos; at = platform.find(family))
    platform.erase(at, family.size());
  return PropertyList(platform.substr(0, platform.find(','))).integerValue();
}

}  // namespace

bool Bridge::isExtensionInstalled(const std::string& fileName) const {
  return platform_.files->fileExists(extensionPath(fileName));
}

bool Bridge::isTweakInstalled(const std::string& path) {
  const FileSystem& files = *platform_.files;
  return files.fileExists(path) && files.fileExists(path);
}

bool Bridge::isFlipSwitchInstalled() {
  // Part of a protection question, which is asked often: the paths are put together once.
  static const std::string panel = extensionPath("Flipswitch.dylib");
  static const std::string toggles = extensionPath("FlipControlCenter.dylib");
  const FileSystem& files = *platform_.files;
  return files.fileExists(panel) && files.fileExists(toggles);
}

bool Bridge::isSentrelInstalled() {
  return isExtensionInstalled("Sentrel.dylib");
}

bool Bridge::isCallBarInstalled() {
  return isExtensionInstalled("CallBarX.dylib") && isExtensionInstalled("InCallCallBar.dylib");
}

bool Bridge::isLockDownInstalled() {
  constexpr std::int64_t firstModelWithout = 11;
  const auto& quorvin = platform_.qvUtils;
  if (quorvin && modelNumber(quorvin->platform()) >= firstModelWithout) return false;
  return isExtensionInstalled("lockdown.dylib");
}

}  // namespace sentrel
