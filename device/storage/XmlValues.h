#pragma once

#include <string_view>

namespace sentrel::storage {

/// Whether the text of a leaf element stands for a value, exactly: no white space around it.
bool isIntegerText(std::string_view text);
bool isRealText(std::string_view text);
bool isDateText(std::string_view text);

/// White space may stand anywhere in it.
bool isDataText(std::string_view text);

/// Whether `reference`, the part of an entity between "&" and ";", stands for a character that XML
/// can carry.
bool isEntity(std::string_view reference);

}  // namespace sentrel::storage
