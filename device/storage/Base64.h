#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sentrel::storage {

/// The standard alphabet, padded, without line breaks.
std::string encodeBase64(std::span<const std::uint8_t> bytes);

/// Takes exactly what encodeBase64() makes.
std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text);

}  // namespace sentrel::storage
