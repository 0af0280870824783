#include "programs/common/Json.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <variant>

#include "device/storage/Base64.h"

namespace sentrel::programs {
namespace {

std::string of(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) {
      quoted += c;
      continue;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
    quoted += escape;
  }
  return quoted + '"';
}

std::string of(bool flag) {
  return flag ? "true" : "false";
}

std::string of(std::int64_t number) {
  return std::to_string(number);
}

std::string of(std::uint64_t number) {
  return std::to_string(number);
}

std::string of(double number) {
  if (!std::isfinite(number)) return "null";
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

std::string of(const PropertyList::Data& data) {
  return of(storage::encodeBase64(data));
}

std::string of(PropertyList::Date date) {
  return of(date.time_since_epoch().count());
}

std::string of(const PropertyList::Array& elements) {
  std::string list;
  for (const PropertyList& element : elements)
    list += (list.empty() ? "" : ", ") + json(element);
  return "[" + list + "]";
}

std::string of(const PropertyList::Dictionary& entries) {
  std::string list;
  for (const auto& [key, value] : entries)
    list += (list.empty() ? "" : ", ") + of(key) + ": " + json(value);
  return "{" + list + "}";
}

}  // namespace

std::string json(const PropertyList& value) {
  return value.visit([](const auto& content) { return of(content); });
}

}  // namespace sentrel::programs
