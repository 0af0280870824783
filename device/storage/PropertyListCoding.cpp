#include "device/storage/PropertyListCoding.h"

#include "device/storage/BinaryReader.h"
#include "device/storage/BinaryWriter.h"
#include "device/storage/PropertyListLimits.h"
#include "device/storage/XmlReader.h"
#include "device/storage/XmlWriter.h"

namespace sentrel::storage {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

template <class Content>
std::optional<std::string> serialize(const Content& content) {
  if (auto document = XmlWriter().write(content)) return document;
  return BinaryWriter().write(content);
}

}  // namespace

PropertyListReading parsePropertyList(std::string_view bytes) {
  using Kind = PropertyListFault::Kind;
  if (bytes.empty()) return PropertyListFault{Kind::empty};
  if (bytes.size() > maximumPropertyListSize) return PropertyListFault{Kind::tooLarge};
  if (bytes.starts_with("bplist")) return readBinary(bytes);
  return readXml(bytes.substr(bytes.starts_with(byteOrderMark) ? byteOrderMark.size() : 0));
}

std::optional<std::string> serializePropertyList(const PropertyList& value) {
  return serialize(value);
}

std::optional<std::string> serializePropertyList(const PropertyList::Dictionary& dictionary) {
  return serialize(dictionary);
}

}  // namespace sentrel::storage
