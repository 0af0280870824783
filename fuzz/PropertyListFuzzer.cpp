// Whatever bytes a property-list file holds: what is read can be written and read again without
// change, and libplist reads the same out of XML.

#include <plist/plist.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "device/storage/PropertyListCoding.h"

namespace {

using namespace sentrel::storage;
using sentrel::PropertyList;

void demand(bool condition, std::string_view what) {
  if (condition) return;
  std::cerr << "property-list: " << what << std::endl;
  std::abort();
}

/// `document` read by libplist and handed over in the binary form.
PropertyListReading readByLibplist(std::string_view document) {
  plist_t tree = nullptr;
  plist_from_xml(document.data(), static_cast<std::uint32_t>(document.size()), &tree);
  char* bytes = nullptr;
  std::uint32_t length = 0;
  if (tree) plist_to_bin(tree, &bytes, &length);
  plist_free(tree);
  const std::string binary(bytes ? bytes : "", length);
  plist_to_bin_free(bytes);
  return parsePropertyList(binary);
}

/// Compared as text, in which a value that is no number equals itself.
void demandSame(const PropertyListReading& reading, const std::string& document,
                std::string_view what) {
  const auto* value = std::get_if<PropertyList>(&reading);
  demand(value && serializePropertyList(*value) == document, what);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto reading = parsePropertyList(bytes);
  const auto* value = std::get_if<PropertyList>(&reading);
  if (!value) return 0;
  const auto document = serializePropertyList(*value);
  const bool binary = bytes.starts_with("bplist");
  demand(binary || document, "what XML held cannot be written as XML");
  if (!document) return 0;
  demandSame(parsePropertyList(*document), *document, "reads back otherwise");
  if (!binary) demandSame(readByLibplist(bytes), *document, "libplist reads otherwise");
  return 0;
}
