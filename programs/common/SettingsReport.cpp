#include "programs/common/SettingsReport.h"

#include <cstdio>
#include <variant>

#include "device/storage/PlistFiles.h"
#include "sentrel/settings/SNSettings.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::programs {

void reportUnreadSettings(const char* program, const std::string& root) {
  if (SNSettings::sharedSettings().isUpToDate()) return;
  const auto file = storage::DeviceRoot(root).hostPath(std::string(settingsFilePath)).value_or("");
  const auto reading = storage::readDictionaryFile(file);
  const auto* fault = std::get_if<storage::PropertyListFault>(&reading);
  std::fprintf(stderr, "%s: %s: %s; until it can be read, everything is locked\n", program,
               file.c_str(), fault ? storage::describe(*fault).c_str() : "it could not be read");
}

}  // namespace sentrel::programs
