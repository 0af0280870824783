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

#include "sentrel/platform/Boxed.h"
#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"

namespace sentrel {

/// One value of a property list: what the settings file holds and what messages carry.
///
/// A plain value: copying copies the whole tree. Boolean, integer and real are types of their own,
/// which no file and no message mixes up. An integer is unsigned only where it has to be, from 2^63
/// on, so that equal numbers are equal values. Strings are UTF-8.
///
/// Two words large, whatever it holds: a file of a few bytes a value may hold a million of them.
class SENTREL_API PropertyList {
 public:
  using Data = std::vector<std::uint8_t>;
  using Date = WallTime;
  using Array = std::vector<PropertyList>;
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;
  PropertyList(bool value) : value_(value) {}
  template <class Integer>
  requires(std::is_integral_v<Integer> && !std::is_same_v<Integer, bool>)
      PropertyList(Integer value)
      : value_(ofInteger(value)) {}
  PropertyList(double value) : value_(value) {}
  PropertyList(const char* text) : PropertyList(std::string(text)) {}
  PropertyList(std::string_view text) : PropertyList(std::string(text)) {}
  PropertyList(std::string text);
  PropertyList(Data data);
  PropertyList(Date date) : value_(date) {}
  PropertyList(Array elements);
  PropertyList(Dictionary entries);

  /// The value if it is of exactly this type, else null.
  template <class T>
  const T* as() const noexcept {
    const auto* held = std::get_if<Held<T>>(&value_);
    return held ? &contentOf(*held) : nullptr;
  }
  template <class T>
  T* as() {
    auto* held = std::get_if<Held<T>>(&value_);
    return held ? &contentOf(*held) : nullptr;
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

  /// What `visitor` returns for the value, which it is handed as the type that it is of.
  template <class Visitor>
  decltype(auto) visit(Visitor&& visitor) const {
    return std::visit(
        [&visitor](const auto& held) -> decltype(auto) { return visitor(contentOf(held)); },
        value_);
  }

  friend bool operator==(const PropertyList&, const PropertyList&) = default;

 private:
  using Value = std::variant<bool, std::int64_t, std::uint64_t, double, Date, Boxed<std::string>,
                             Boxed<Data>, Boxed<Array>, Boxed<Dictionary>>;

  template <class Integer>
  static constexpr Value ofInteger(Integer value) {
    if (std::cmp_greater(value, std::numeric_limits<std::int64_t>::max()))
      return static_cast<std::uint64_t>(value);
    return static_cast<std::int64_t>(value);
  }

  template <class T>
  using Held = std::conditional_t<std::is_arithmetic_v<T> || std::is_same_v<T, Date>, T, Boxed<T>>;

  template <class T>
  static T& contentOf(T& held) noexcept {
    return held;
  }
  template <class T>
  static const T& contentOf(const Boxed<T>& held) noexcept {
    return held.content();
  }
  template <class T>
  static T& contentOf(Boxed<T>& held) {
    return held.content();
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
