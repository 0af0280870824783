#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace sentrel::programs {

/// The number that a word is from its first to its last character; none for any other word, and
/// for a number that the type cannot hold.
template <class Number>
std::optional<Number> numberOf(std::string_view word) {
  Number number{};
  const char* const end = word.data() + word.size();
  const auto [read, error] = std::from_chars(word.data(), end, number);
  return error == std::errc() && read == end ? std::optional(number) : std::nullopt;
}

}  // namespace sentrel::programs
