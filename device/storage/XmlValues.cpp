#include "device/storage/XmlValues.h"

#include <charconv>
#include <chrono>
#include <cstdint>
#include <system_error>

#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

/// Whether all of `text` is a number that fits `Number`.
template <class Number, class... Format>
bool reads(std::string_view text, Number& number, Format... format) {
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, format...);
  return result.ec == std::errc() && result.ptr == end;
}

/// std::from_chars accepts a minus sign but no plus sign.
std::string_view withoutPlus(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

/// The number in the digits from `start`, or -1.
int digitsAt(std::string_view text, std::size_t start, std::size_t count) {
  int number = 0;
  for (const char c : text.substr(start, count)) {
    if (c < '0' || c > '9') return -1;
    number = number * 10 + (c - '0');
  }
  return number;
}

bool isBase64Character(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
         c == '/';
}

}  // namespace

bool isIntegerText(std::string_view text) {
  std::int64_t number = 0;
  if (text.starts_with("0x") || text.starts_with("0X"))
    return text.size() > 2 && text[2] != '-' && reads(text.substr(2), number, 16);
  const std::string_view plain = withoutPlus(text);
  const std::string_view digits = plain.substr(plain.starts_with('-') ? 1 : 0);
  // libplist reads a number that starts with a needless zero as octal.
  const bool octal = digits.size() > 1 && digits.front() == '0';
  return !octal && reads(plain, number);
}

bool isRealText(std::string_view text) {
  double number = 0;
  return reads(withoutPlus(text), number);
}

bool isDateText(std::string_view text) {
  constexpr std::string_view shape = "0000-00-00T00:00:00Z";
  if (text.size() != shape.size()) return false;
  for (std::size_t i = 0; i < shape.size(); ++i)
    if (shape[i] != '0' && text[i] != shape[i]) return false;
  const int hour = digitsAt(text, 11, 2);
  const int minute = digitsAt(text, 14, 2);
  const int second = digitsAt(text, 17, 2);
  const int year = digitsAt(text, 0, 4);
  const int month = digitsAt(text, 5, 2);
  const int day = digitsAt(text, 8, 2);
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) return false;
  if (year < 1 || month < 1 || day < 1) return false;
  return std::chrono::year_month_day(std::chrono::year(year),
                                     std::chrono::month(static_cast<unsigned>(month)),
                                     std::chrono::day(static_cast<unsigned>(day)))
      .ok();
}

bool isDataText(std::string_view text) {
  std::size_t characters = 0;
  std::size_t padding = 0;
  for (const char c : text) {
    if (c == ' ' || (c >= '\t' && c <= '\r')) continue;
    if (c == '=')
      ++padding;
    else if (padding > 0 || !isBase64Character(c))
      return false;
    ++characters;
  }
  return characters % 4 == 0 && padding <= 2;
}

bool isEntity(std::string_view reference) {
  for (const std::string_view name : {"amp", "lt", "gt", "quot", "apos"})
    if (reference == name) return true;
  if (!reference.starts_with('#')) return false;
  const bool hexadecimal = reference.starts_with("#x");
  std::uint32_t number = 0;
  return reads(reference.substr(hexadecimal ? 2 : 1), number, hexadecimal ? 16 : 10) &&
         isXmlCharacter(number);
}

}  // namespace sentrel::storage
