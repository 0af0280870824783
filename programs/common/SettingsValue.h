#pragma once

#include <string>
#include <string_view>

#include "programs/common/Words.h"
#include "sentrel/platform/PropertyList.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::programs {

// What our own programs write into a settings file. Readers of the file take more.

/// The known key of that name; throws UsageError for any other.
const SettingsKey& requireSettingsKey(const std::string& name);

/// What a person wrote for a setting; a list takes several words. Throws UsageError for words that
/// are no such value, for folder records, and for the passcode, which is stored enciphered.
PropertyList parseSettingsValue(const SettingsKey& key, const Words& words);

/// What a setting of that type is, in words.
const char* nameOf(SettingsType type);

/// Whether a value is one, its elements aside.
bool isProper(SettingsType type, const PropertyList& value);

/// Throws UsageError for an empty name: no item and no network has it.
const std::string& requireName(const std::string& name);

/// Whether a prompt takes the passcode. One that it does not take would lock its owner out.
bool isTypable(std::string_view passcode);

/// Throws UsageError for any other.
void requireTypable(std::string_view passcode);

}  // namespace sentrel::programs
