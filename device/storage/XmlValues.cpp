#include "device/storage/XmlValues.h"

#include <charconv>
#include <chrono>
#include <string>
#include <system_error>

#include "device/storage/Base64.h"
#include "device/storage/Utf8.h"

namespace sentrel::storage {
namespace {

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back()))
    text.remove_suffix(1);
  return text;
}

/// All of `text` as a number, if it is one that fits.
template <class Number, class... Format>
std::optional<Number> numberFrom(std::string_view text, Format... format) {
  Number number{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, format...);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

/// Unsigned only where it has to be.
std::optional<PropertyList> integerFrom(std::string_view text, int base) {
  if (const auto number = numberFrom<std::int64_t>(text, base)) return *number;
  if (const auto number = numberFrom<std::uint64_t>(text, base)) return *number;
  return std::nullopt;
}

/// std::from_chars accepts a minus sign but no plus sign.
std::string_view withoutPlus(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

/// The number in the `count` digits from `start`.
std::optional<unsigned> digitsAt(std::string_view text, std::size_t start, std::size_t count) {
  return numberFrom<unsigned>(text.substr(start, count));
}

bool hasShapeOfDate(std::string_view text) {
  constexpr std::string_view shape = "0000-00-00T00:00:00Z";
  if (text.size() != shape.size()) return false;
  for (std::size_t i = 0; i < shape.size(); ++i)
    if (shape[i] != '0' && text[i] != shape[i]) return false;
  return true;
}

}  // namespace

std::optional<PropertyList> integerFromXml(std::string_view text) {
  const std::string_view number = withoutPlus(trimmed(text));
  if (number.starts_with("0x") && number.substr(2, 1) != "-")
    return integerFrom(number.substr(2), 16);
  // Some readers take a number that starts with a needless zero as octal.
  const std::string_view digits = number.substr(number.starts_with('-') ? 1 : 0);
  if (digits.size() > 1 && digits.front() == '0') return std::nullopt;
  return integerFrom(number, 10);
}

std::optional<double> realFromXml(std::string_view text) {
  return numberFrom<double>(withoutPlus(trimmed(text)));
}

std::optional<PropertyList::Date> dateFromXml(std::string_view text) {
  using namespace std::chrono;
  text = trimmed(text);
  if (!hasShapeOfDate(text)) return std::nullopt;
  const auto y = digitsAt(text, 0, 4), m = digitsAt(text, 5, 2), d = digitsAt(text, 8, 2);
  const auto hour = digitsAt(text, 11, 2), minute = digitsAt(text, 14, 2);
  const auto second = digitsAt(text, 17, 2);
  if (!y || !m || !d || !hour || !minute || !second) return std::nullopt;
  const year_month_day day(year(static_cast<int>(*y)), month(*m), std::chrono::day(*d));
  if (*y < 1 || !day.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return sys_days(day) + hours(*hour) + minutes(*minute) + seconds(*second);
}

std::optional<PropertyList::Data> dataFromXml(std::string_view text) {
  std::string packed;
  packed.reserve(text.size());
  for (const char c : text)
    if (!isSpace(c)) packed += c;
  return decodeBase64(packed);
}

std::optional<char32_t> characterFromXml(std::string_view reference) {
  if (reference == "amp") return U'&';
  if (reference == "lt") return U'<';
  if (reference == "gt") return U'>';
  if (reference == "quot") return U'"';
  if (reference == "apos") return U'\'';
  if (!reference.starts_with('#')) return std::nullopt;
  const bool hexadecimal = reference.starts_with("#x");
  const auto number =
      numberFrom<std::uint32_t>(reference.substr(hexadecimal ? 2 : 1), hexadecimal ? 16 : 10);
  if (!number || !isXmlCharacter(*number)) return std::nullopt;
  return *number;
}

}  // namespace sentrel::storage
