#include "tests/support/LibplistReading.h"

#include <plist/plist.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

namespace sentrel {
namespace {

template <auto Function>
struct FreedBy {
  template <class T>
  void operator()(T* object) const {
    Function(object);
  }
};

using Tree = std::unique_ptr<void, FreedBy<plist_free>>;
using Owned = std::unique_ptr<void, FreedBy<std::free>>;

Tree treeOf(std::string_view bytes) {
  plist_t tree = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (bytes.starts_with("bplist"))
    plist_from_bin(bytes.data(), size, &tree);
  else
    plist_from_xml(bytes.data(), size, &tree);
  return Tree(tree);
}

std::string binaryOf(plist_t node) {
  char* bytes = nullptr;
  std::uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  const Owned owned(bytes);
  return {bytes ? bytes : "", length};
}

template <class Number>
Number numberOf(plist_t node, void (*get)(plist_t, Number*)) {
  Number number{};
  get(node, &number);
  return number;
}

std::string_view bytesOf(plist_t node, const char* (*get)(plist_t, std::uint64_t*)) {
  std::uint64_t length = 0;
  const char* bytes = get(node, &length);
  return bytes ? std::string_view(bytes, length) : std::string_view();
}

/// libplist tells a date in 32-bit seconds only, which end in 2069; in the binary form it writes
/// the whole number, right behind an 8-byte header and the marker.
PropertyList::Date dateOf(plist_t node) {
  std::uint64_t bits = 0;
  for (const char byte : binaryOf(node).substr(9, sizeof(double)))
    bits = bits << 8 | static_cast<unsigned char>(byte);
  return PropertyList::Date(Seconds(978307200) + Seconds(std::bit_cast<double>(bits)));
}

PropertyList valueOf(plist_t node);

PropertyList::Array arrayOf(plist_t node) {
  PropertyList::Array elements;
  plist_array_iter position = nullptr;
  plist_array_new_iter(node, &position);
  const Owned owned(position);
  for (;;) {
    plist_t item = nullptr;
    plist_array_next_item(node, position, &item);
    if (!item) return elements;
    elements.push_back(valueOf(item));
  }
}

PropertyList::Dictionary dictionaryOf(plist_t node) {
  PropertyList::Dictionary entries;
  plist_dict_iter position = nullptr;
  plist_dict_new_iter(node, &position);
  const Owned owned(position);
  for (;;) {
    char* key = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, position, &key, &item);
    const Owned ownedKey(key);
    if (!item) return entries;
    entries.insert_or_assign(key, valueOf(item));
  }
}

PropertyList valueOf(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
      return numberOf(node, plist_get_bool_val) != 0;
    case PLIST_UINT:
      return numberOf(node, plist_get_uint_val);
    case PLIST_REAL:
      return numberOf(node, plist_get_real_val);
    case PLIST_STRING:
      return bytesOf(node, plist_get_string_ptr);
    case PLIST_DATA: {
      const std::string_view bytes = bytesOf(node, plist_get_data_ptr);
      return PropertyList::Data(bytes.begin(), bytes.end());
    }
    case PLIST_DATE:
      return dateOf(node);
    case PLIST_ARRAY:
      return arrayOf(node);
    case PLIST_DICT:
      return dictionaryOf(node);
    default:
      return "a type that no property list of ours has";
  }
}

}  // namespace

std::optional<PropertyList> readByLibplist(std::string_view bytes) {
  const Tree tree = treeOf(bytes);
  if (!tree) return std::nullopt;
  return valueOf(tree.get());
}

std::string binaryByLibplist(std::string_view document) {
  return binaryOf(treeOf(document).get());
}

bool isSameValue(const PropertyList& left, const PropertyList& right) {
  if (const auto* a = left.as<double>(), *b = right.as<double>(); a && b)
    return *a == *b || (std::isnan(*a) && std::isnan(*b));
  if (const auto* a = left.as<PropertyList::Array>(), *b = right.as<PropertyList::Array>(); a && b)
    return std::ranges::equal(*a, *b, isSameValue);
  if (const auto* a = left.as<PropertyList::Dictionary>(),
      *b = right.as<PropertyList::Dictionary>();
      a && b)
    return std::ranges::equal(*a, *b, [](const auto& one, const auto& other) {
      return one.first == other.first && isSameValue(one.second, other.second);
    });
  return left == right;
}

}  // namespace sentrel
