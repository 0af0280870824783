#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::sentrelctl {

/// The record of the folder that the application lies in, as the home screen sees it now.
std::optional<PropertyList> folderOf(const std::string& bundleIdentifier);

/// The same; throws ProgramError where the home screen does not answer or knows of none.
PropertyList requireFolderOf(const std::string& bundleIdentifier);

/// A record's name, "?" for one without.
std::string nameOf(const PropertyList& record);

/// Whether one of the record's icons is the application's.
bool holdsApplication(const PropertyList& record, std::string_view bundleIdentifier);

}  // namespace sentrel::sentrelctl
