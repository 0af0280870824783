#pragma once

#include "programs/common/Words.h"
#include "sentrel/platform/PropertyList.h"
#include "sentrel/settings/SettingsKeys.h"

namespace sentrel::programs {

/// The known key of that name; throws UsageError for any other.
const SettingsKey& requireSettingsKey(const std::string& name);

/// What a person wrote for a setting of that type; a list takes several words. Throws UsageError
/// for words that are no such value, and for folder records.
PropertyList parseSettingsValue(SettingsType type, const Words& words);

}  // namespace sentrel::programs
