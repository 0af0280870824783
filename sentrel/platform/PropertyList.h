#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// One value of a property list: what the settings file holds and what messages carry.
///
/// A plain value: copying copies the whole tree. Boolean, integer and real are types of their own,
/// which no file and no message mixes up. An integer is unsigned only where it has to be, from 2^63
/// on, so that equal numbers are equal values. Strings are UTF-8.
class SENTREL_API PropertyList {
 public:
  using Data = std::vector<std::uint8_t>;
  using Date = WallTime;
  using Array = std::vector<PropertyList>;
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;
  using Value = std::variant<bool, std::int64_t, std::uint64_t, double, std::string, Data, Date,
                             Array, Dictionary>;

  PropertyList(bool value) : value_(value) {}
  template <class Integer>
  requires(std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>)
      PropertyList(Integer value)
      : value_(ofInteger(value)) {}
  PropertyList(double value) : value_(value) {}
  PropertyList(const char* text) : value_(std::string(text)) {}
  PropertyList(std::string_view text) : value_(std::string(text)) {}
  PropertyList(std::string text) : value_(std::move(text)) {}
  PropertyList(Data data) : value_(std::move(data)) {}
  PropertyList(Date date) : value_(date) {}
  PropertyList(Array elements) : value_(std::move(elements)) {}
  PropertyList(Dictionary entries) : value_(std::move(entries)) {}

  /// The value if it is of exactly this type, else null.
  template <class T>
  const T* as() const noexcept {
    return std::get_if<T>(&value_);
  }
  template <class T>
  T* as() noexcept {
    return std::get_if<T>(&value_);
  }

  /// True for a boolean, an integer or a real.
  bool isNumber() const noexcept;

  /// The platform's lenient readings. A number converts; a string is read from its start as far as
  /// it makes sense ("YES", "true" and "1" are YES, "12abc" is 12); anything else is NO or 0.
  /// Values too large for the result are clamped to its limits.
  bool boolValue() const noexcept;
  std::int64_t integerValue() const noexcept;
  float floatValue() const noexcept;
  double doubleValue() const noexcept;

  const Value& value() const noexcept { return value_; }

  friend bool operator==(const PropertyList&, const PropertyList&) = default;

 private:
  template <class Integer>
  static constexpr Value ofInteger(Integer value) {
    if (std::cmp_greater(value, std::numeric_limits<std::int64_t>::max()))
      return static_cast<std::uint64_t>(value);
    return static_cast<std::int64_t>(value);
  }

  Value value_;
};

/// The entry under `key`, or null. The pointer lives as long as the entry.
SENTREL_API const PropertyList* find(const PropertyList::Dictionary& dictionary,
                                     std::string_view key) noexcept;

/// The entry under `key` if it is a T, else null.
template <class T>
const T* find(const PropertyList::Dictionary& dictionary, std::string_view key) noexcept {
  const PropertyList* entry = find(dictionary, key);
  return entry ? entry->as<T>() : nullptr;
}

/// A one-line rendering for logs and people: strings bare at the top and quoted inside collections,
/// booleans as YES and NO, data as its length.
SENTREL_API std::string describe(const PropertyList& value);

}  // namespace sentrel
