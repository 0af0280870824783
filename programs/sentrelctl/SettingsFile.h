#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "programs/sentrelctl/Command.h"
#include "sentrel/platform/PropertyList.h"
#include "sentrel/platform/PropertyListFiles.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::sentrelctl {

/// Where the settings file is; empty where the device root cannot hold it.
std::string settingsFileOnThisMachine(const Context& context);

/// The settings file as it stands; throws ProgramError with the reason when it cannot be read.
PropertyList::Dictionary readSettingsFile(const Context& context);

/// A change of the settings file: for as long as it lives no other program writes there, and the
/// settings in memory are what the file held when it began.
class SettingsChange {
 public:
  /// Throws ProgramError with the reason when the file cannot be read or others keep it.
  explicit SettingsChange(const Context& context);

 private:
  const std::unique_ptr<PropertyListFiles::Lock> alone_;
};

/// The list under `key`, empty where there is nothing; throws ProgramError for anything else, which
/// a new list would replace.
PropertyList::Array requireListOrNone(const Context& context, std::string_view key);

/// Within a change stores `value` under `key` through the library, or removes the key, and tells
/// every process.
/// What always holds for a set of protected items then holds in the file too. Throws ProgramError
/// with the reason when the file could not be changed.
void changeSetting(const Context& context, std::string_view key, std::optional<PropertyList> value);

/// Throws ProgramError where a writer of the library says that the file did not take it.
void requireWritten(bool written);

}  // namespace sentrel::sentrelctl
