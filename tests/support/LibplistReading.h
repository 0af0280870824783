#pragma once

#include <plist/plist.h>

#include <string>
#include <string_view>

#include "device/storage/PropertyListCoding.h"

namespace sentrel {

/// `bytes`, a property list in XML or binary, as libplist reads it and writes it in its own binary
/// form; empty where it refuses. It guards against nothing, so our own reader must have accepted
/// it.
inline std::string binaryByLibplist(std::string_view bytes) {
  plist_t tree = nullptr;
  const auto read = bytes.starts_with("bplist") ? plist_from_bin : plist_from_xml;
  read(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &tree);
  char* written = nullptr;
  std::uint32_t length = 0;
  if (tree) plist_to_bin(tree, &written, &length);
  const std::string binary(written ? written : "", length);
  plist_to_bin_free(written);
  plist_free(tree);
  return binary;
}

/// Whether libplist reads `value` out of `bytes`; a real that is no number equals another.
inline bool libplistReads(std::string_view bytes, const PropertyList& value) {
  const auto reading = storage::parsePropertyList(binaryByLibplist(bytes));
  const auto* second = std::get_if<PropertyList>(&reading);
  if (!second || *second == value) return second != nullptr;
  const std::string text = describe(value);
  return text.find("nan") != text.npos && describe(*second) == text;
}

}  // namespace sentrel
