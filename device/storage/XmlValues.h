#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "sentrel/platform/PropertyList.h"

namespace sentrel::storage {

/// The value that the text of a leaf element stands for, white space around it aside; none when it
/// is anything but that. Nothing is clamped, rounded to another type or guessed, since the next
/// rewrite of the file would make the guess final. An integer fits 64 bits, signed or not.
std::optional<PropertyList> integerFromXml(std::string_view text);
std::optional<double> realFromXml(std::string_view text);
std::optional<PropertyList::Date> dateFromXml(std::string_view text);
std::optional<PropertyList::Data> dataFromXml(std::string_view text);

/// The character that `reference`, what stands between "&" and ";", means; none when there is none
/// or when XML may not carry it.
std::optional<char32_t> characterFromXml(std::string_view reference);

}  // namespace sentrel::storage
