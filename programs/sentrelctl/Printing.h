#pragma once

#include <string>
#include <string_view>

#include "programs/sentrelctl/Command.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel::sentrelctl {

/// What a file holds under `key`, as that key's type has it: a switch that was toggled holds a
/// number.
PropertyList presented(std::string_view key, const PropertyList& value);

/// A value for people, on one line.
std::string shown(const PropertyList& value);

/// Prints a value, a list one element a line; or as JSON, if that was asked for.
void print(const Context& context, const PropertyList& value);

}  // namespace sentrel::sentrelctl
