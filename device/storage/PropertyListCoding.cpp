#include "device/storage/PropertyListCoding.h"

#include <plist/plist.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

#include "device/storage/BinaryCheck.h"
#include "device/storage/ClassicLocale.h"
#include "device/storage/PropertyListLimits.h"
#include "device/storage/XmlCheck.h"
#include "device/storage/XmlWriter.h"

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

std::optional<PropertyList> convert(plist_t node);

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
/// the whole number, right behind an 8-byte header and the marker.
std::optional<PropertyList> dateOf(plist_t node) {
  constexpr Seconds startOf2001{978307200};
  constexpr std::size_t start = 9;
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  const Text owned(bytes);
  if (length < start + sizeof(double)) return std::nullopt;
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < sizeof(double); ++i)
    bits = bits << 8 | static_cast<unsigned char>(bytes[start + i]);
  const auto seconds = std::bit_cast<double>(bits);
  if (!std::isfinite(seconds)) return std::nullopt;
  return PropertyList(WallTime(Seconds(seconds) + startOf2001));
}

std::optional<PropertyList> arrayOf(plist_t node) {
  PropertyList::Array elements;
  elements.reserve(plist_array_get_size(node));
  plist_array_iter position = nullptr;
  plist_array_new_iter(node, &position);
  const Iterator owned(position);
  for (;;) {
    plist_t item = nullptr;
    plist_array_next_item(node, position, &item);
    if (!item) return PropertyList(std::move(elements));
    auto element = convert(item);
    if (!element) return std::nullopt;
    elements.push_back(std::move(*element));
  }
}

std::optional<PropertyList> dictionaryOf(plist_t node) {
  PropertyList::Dictionary entries;
  plist_dict_iter position = nullptr;
  plist_dict_new_iter(node, &position);
  const Iterator owned(position);
  for (;;) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, position, &key, &item);
    const Text ownedKey(key);
    if (!item) return PropertyList(std::move(entries));
    auto value = convert(item);
    if (!value || !key) return std::nullopt;
    entries.insert_or_assign(key, std::move(*value));
  }
}

/// None for a value that a PropertyList cannot hold. The caller has bounded the depth.
std::optional<PropertyList> convert(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t flag = 0;
      plist_get_bool_val(node, &flag);
      return PropertyList(flag != 0);
    }
    case PLIST_UINT: {
      std::uint64_t number = 0;
      plist_get_uint_val(node, &number);
      return PropertyList(number);
    }
    case PLIST_REAL: {
      double number = 0;
      plist_get_real_val(node, &number);
      return PropertyList(number);
    }
    case PLIST_STRING:
      return PropertyList(textOf(node));
    case PLIST_DATA:
      return PropertyList(dataOf(node));
    case PLIST_DATE:
      return dateOf(node);
    case PLIST_ARRAY:
      return arrayOf(node);
    case PLIST_DICT:
      return dictionaryOf(node);
    default:
      return std::nullopt;
  }
}

}  // namespace

PropertyListReading parsePropertyList(std::string_view bytes) {
  using Kind = PropertyListFault::Kind;
  if (bytes.empty()) return PropertyListFault{Kind::empty};
  if (bytes.size() > maximumPropertyListSize) return PropertyListFault{Kind::tooLarge};
  const bool binary = bytes.starts_with("bplist");
  if (const auto fault = binary ? checkBinary(bytes) : checkXml(bytes)) return *fault;
  const ClassicLocale locale;
  const auto read = binary ? plist_from_bin : plist_from_xml;
  plist_t root = nullptr;
  read(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
  const Tree tree(root);
  if (!tree) return PropertyListFault{Kind::damaged};
  auto value = convert(root);
  if (!value) return PropertyListFault{Kind::unsupportedType};
  return std::move(*value);
}

std::optional<std::string> serializePropertyList(const PropertyList& value) {
  return XmlWriter().write(value);
}

std::optional<std::string> serializePropertyList(const PropertyList::Dictionary& dictionary) {
  return XmlWriter().write(dictionary);
}

}  // namespace sentrel::storage
