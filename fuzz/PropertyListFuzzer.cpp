// Whatever bytes a property-list file holds: libplist reads the same out of them, and what is read
// can be written and read again without change.

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "device/storage/PropertyListCoding.h"
#include "tests/support/LibplistReading.h"

namespace {

using namespace sentrel::storage;
using sentrel::PropertyList;

void demand(bool condition, std::string_view what) {
  if (condition) return;
  std::cerr << "property-list: " << what << std::endl;
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const auto reading = parsePropertyList(bytes);
  const auto* value = std::get_if<PropertyList>(&reading);
  if (!value) return 0;
  demand(sentrel::libplistReads(bytes, *value), "libplist reads otherwise");
  const auto document = serializePropertyList(*value);
  demand(bytes.starts_with("bplist") || document, "what XML held cannot be written as XML");
  if (!document) return 0;
  // Compared as text, in which a date has whole seconds.
  const auto again = parsePropertyList(*document);
  const auto* same = std::get_if<PropertyList>(&again);
  demand(same && serializePropertyList(*same) == document, "reads back otherwise");
  return 0;
}
