#include "device/storage/BinaryReader.h"

#include <plist/plist.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

#include "device/storage/BinaryCheck.h"

namespace sentrel::storage {
namespace {

template <auto Function>
struct FreedBy {
  template <class T>
  void operator()(T* object) const {
    Function(object);
  }
};

using Tree = std::unique_ptr<void, FreedBy<plist_free>>;
using Iterator = std::unique_ptr<void, FreedBy<std::free>>;
using Text = std::unique_ptr<char, FreedBy<std::free>>;

std::string_view textOf(plist_t node) {
  std::uint64_t length = 0;
  const char* text = plist_get_string_ptr(node, &length);
  return text ? std::string_view(text, length) : std::string_view();
}

PropertyList::Data dataOf(plist_t node) {
  std::uint64_t length = 0;
  const char* bytes = plist_get_data_ptr(node, &length);
  return bytes ? PropertyList::Data(bytes, bytes + length) : PropertyList::Data();
}

/// libplist tells a date in 32-bit seconds only, which end in 2069; in the binary form it writes
/// the whole number, right behind an 8-byte header and the marker. Not finite when it has none.
Seconds since2001(plist_t node) {
  constexpr std::size_t start = 9;
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  const Text owned(bytes);
  if (length < start + sizeof(double)) return Seconds(std::numeric_limits<double>::infinity());
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < sizeof(double); ++i)
    bits = bits << 8 | static_cast<unsigned char>(bytes[start + i]);
  return Seconds(std::bit_cast<double>(bits));
}

/// Makes our values of libplist's. The caller has bounded the depth.
class Conversion {
 public:
  PropertyList convert(plist_t node) {
    switch (plist_get_node_type(node)) {
      case PLIST_BOOLEAN:
        return convert(node, plist_get_bool_val, std::uint8_t()) != 0;
      case PLIST_UINT:
        return convert(node, plist_get_uint_val, std::uint64_t());
      case PLIST_REAL:
        return convert(node, plist_get_real_val, double());
      case PLIST_STRING:
        return textOf(node);
      case PLIST_DATA:
        return dataOf(node);
      case PLIST_DATE:
        return dateOf(node);
      case PLIST_ARRAY:
        return arrayOf(node);
      case PLIST_DICT:
        return dictionaryOf(node);
      default:
        failed_ = true;
        return false;
    }
  }

  /// Whether a value was met that a PropertyList cannot hold.
  bool failed() const noexcept { return failed_; }

 private:
  template <class Number>
  static Number convert(plist_t node, void (*get)(plist_t, Number*), Number number) {
    get(node, &number);
    return number;
  }

  PropertyList::Date dateOf(plist_t node) {
    constexpr Seconds startOf2001{978307200};
    const Seconds seconds = since2001(node);
    if (!std::isfinite(seconds.count())) failed_ = true;
    return PropertyList::Date(seconds + startOf2001);
  }

  PropertyList::Array arrayOf(plist_t node) {
    PropertyList::Array elements;
    elements.reserve(plist_array_get_size(node));
    plist_array_iter position = nullptr;
    plist_array_new_iter(node, &position);
    const Iterator owned(position);
    for (;;) {
      plist_t item = nullptr;
      plist_array_next_item(node, position, &item);
      if (!item) return elements;
      elements.push_back(convert(item));
    }
  }

  PropertyList::Dictionary dictionaryOf(plist_t node) {
    PropertyList::Dictionary entries;
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(node, &position);
    const Iterator owned(position);
    for (;;) {
      char* key = nullptr;
      plist_t item = nullptr;
      plist_dict_next_item(node, position, &key, &item);
      const Text ownedKey(key);
      if (!item) return entries;
      entries.insert_or_assign(key, convert(item));
    }
  }

  bool failed_ = false;
};

}  // namespace

PropertyListReading readBinary(std::string_view file) {
  using Kind = PropertyListFault::Kind;
  if (const auto fault = checkBinary(file)) return *fault;
  plist_t root = nullptr;
  plist_from_bin(file.data(), static_cast<std::uint32_t>(file.size()), &root);
  const Tree tree(root);
  if (!tree) return PropertyListFault{Kind::damaged};
  Conversion conversion;
  PropertyListReading reading = conversion.convert(root);
  if (conversion.failed()) return PropertyListFault{Kind::unsupportedType};
  return reading;
}

}  // namespace sentrel::storage
