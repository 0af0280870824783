#include "device/storage/PropertyListCoding.h"

#include "device/storage/BinaryReader.h"
#include "device/storage/PropertyListLimits.h"
#include "device/storage/XmlReader.h"
#include "device/storage/XmlWriter.h"

namespace sentrel::storage {

PropertyListReading parsePropertyList(std::string_view bytes) {
  using Kind = PropertyListFault::Kind;
  if (bytes.empty()) return PropertyListFault{Kind::empty};
  if (bytes.size() > maximumPropertyListSize) return PropertyListFault{Kind::tooLarge};
  return bytes.starts_with("bplist") ? readBinary(bytes) : readXml(bytes);
}

std::optional<std::string> serializePropertyList(const PropertyList& value) {
  return XmlWriter().write(value);
}

std::optional<std::string> serializePropertyList(const PropertyList::Dictionary& dictionary) {
  return XmlWriter().write(dictionary);
}

}  // namespace sentrel::storage
