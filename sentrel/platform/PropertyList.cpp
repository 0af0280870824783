#include "sentrel/platform/PropertyList.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace sentrel {
namespace {

bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Drops leading white space and a plus sign, which std::from_chars does not accept.
std::string_view numericPart(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return {};
  }
  return text;
}

/// YES when what follows white space, a sign and zeros is a Y, a T or a digit from 1 to 9.
bool boolOfText(std::string_view text) {
  while (!text.empty() && isSpace(text.front()))
    text.remove_prefix(1);
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  while (!text.empty() && text.front() == '0')
    text.remove_prefix(1);
  if (text.empty()) return false;
  const char c = text.front();
  return c == 'Y' || c == 'y' || c == 'T' || c == 't' || (c >= '1' && c <= '9');
}

std::int64_t integerOfText(std::string_view text) {
  text = numericPart(text);
  std::int64_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc::result_out_of_range) return value;
  using Limits = std::numeric_limits<std::int64_t>;
  return text.front() == '-' ? Limits::min() : Limits::max();
}

/// Of the text of a number that no real can hold: whether it is too near to zero for one rather
/// than too far from it.
bool isNearZero(std::string_view number) {
  const std::size_t mark = number.find_first_of("eE");
  const std::string_view digits = number.substr(0, mark);
  const auto exponent =
      mark == number.npos ? 0.0 : static_cast<double>(integerOfText(number.substr(mark + 1)));
  const auto point = static_cast<double>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<double>(digits.find_first_of("123456789"));
  return point - first + exponent < 0;
}

double realOfText(std::string_view text) {
  text = numericPart(text);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  // "inf" and "nan" are words, not numbers.
  if (result.ec != std::errc::result_out_of_range) return std::isfinite(value) ? value : 0;
  if (isNearZero({text.data(), result.ptr})) return 0;
  constexpr double infinity = std::numeric_limits<double>::infinity();
  return text.front() == '-' ? -infinity : infinity;
}

std::int64_t truncated(double value) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (std::isnan(value)) return 0;
  if (value >= 0x1p63) return Limits::max();
  if (value < -0x1p63) return Limits::min();
  return static_cast<std::int64_t>(value);
}

std::string formatted(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

std::string describeElement(const PropertyList& value) {
  if (const auto* text = value.as<std::string>()) return '"' + *text + '"';
  return describe(value);
}

std::string describeArray(const PropertyList::Array& elements) {
  std::string text = "(";
  for (const PropertyList& element : elements) {
    if (text.size() > 1) text += ", ";
    text += describeElement(element);
  }
  return text + ")";
}

std::string describeDictionary(const PropertyList::Dictionary& entries) {
  std::string text = "{";
  for (const auto& [key, value] : entries) {
    if (text.size() > 1) text += "; ";
    text += key + " = " + describeElement(value);
  }
  return text + "}";
}

}  // namespace

PropertyList::PropertyList(std::string text) : value_(Boxed(std::move(text))) {}
PropertyList::PropertyList(Data data) : value_(Boxed(std::move(data))) {}
PropertyList::PropertyList(Array elements) : value_(Boxed(std::move(elements))) {}
PropertyList::PropertyList(Dictionary entries) : value_(Boxed(std::move(entries))) {}

bool PropertyList::isNumber() const noexcept {
  return as<bool>() || as<std::int64_t>() || as<std::uint64_t>() || as<double>();
}

bool PropertyList::boolValue() const noexcept {
  if (const auto* flag = as<bool>()) return *flag;
  if (const auto* integer = as<std::int64_t>()) return *integer != 0;
  if (as<std::uint64_t>()) return true;
  if (const auto* real = as<double>()) return *real != 0;
  if (const auto* text = as<std::string>()) return boolOfText(*text);
  return false;
}

std::int64_t PropertyList::integerValue() const noexcept {
  if (const auto* flag = as<bool>()) return *flag ? 1 : 0;
  if (const auto* integer = as<std::int64_t>()) return *integer;
  if (as<std::uint64_t>()) return std::numeric_limits<std::int64_t>::max();
  if (const auto* real = as<double>()) return truncated(*real);
  if (const auto* text = as<std::string>()) return integerOfText(*text);
  return 0;
}

float PropertyList::floatValue() const noexcept {
  constexpr double largest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(doubleValue(), -largest, largest));
}

double PropertyList::doubleValue() const noexcept {
  if (const auto* flag = as<bool>()) return *flag ? 1 : 0;
  if (const auto* integer = as<std::int64_t>()) return static_cast<double>(*integer);
  if (const auto* integer = as<std::uint64_t>()) return static_cast<double>(*integer);
  if (const auto* real = as<double>()) return *real;
  if (const auto* text = as<std::string>()) return realOfText(*text);
  return 0;
}

const PropertyList* find(const PropertyList::Dictionary& dictionary,
                         std::string_view key) noexcept {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : &entry->second;
}

std::string describe(const PropertyList& value) {
  if (const auto* flag = value.as<bool>()) return *flag ? "YES" : "NO";
  if (const auto* integer = value.as<std::int64_t>()) return std::to_string(*integer);
  if (const auto* integer = value.as<std::uint64_t>()) return std::to_string(*integer);
  if (const auto* real = value.as<double>()) return formatted(*real);
  if (const auto* text = value.as<std::string>()) return *text;
  if (const auto* data = value.as<PropertyList::Data>())
    return std::string("<").append(std::to_string(data->size())) + " bytes>";
  if (const auto* date = value.as<PropertyList::Date>())
    return "date " + formatted(date->time_since_epoch().count());
  if (const auto* elements = value.as<PropertyList::Array>()) return describeArray(*elements);
  return describeDictionary(*value.as<PropertyList::Dictionary>());
}

}  // namespace sentrel
