#include "device/storage/PlistFiles.h"

#include "device/storage/DurableWrite.h"
#include "device/storage/FileReading.h"
#include "device/storage/PropertyListCoding.h"

namespace sentrel::storage {

DictionaryReading readDictionaryFile(const std::string& hostPath) {
  const auto content = readWholeFile(hostPath);
  if (const auto* fault = std::get_if<PropertyListFault>(&content)) return *fault;
  auto reading = parsePropertyList(std::get<std::string>(content));
  if (const auto* fault = std::get_if<PropertyListFault>(&reading)) return *fault;
  auto* root = std::get<PropertyList>(reading).as<PropertyList::Dictionary>();
  if (!root) return PropertyListFault{PropertyListFault::Kind::notADictionary};
  return std::move(*root);
}

std::optional<PropertyList::Dictionary> PlistFiles::readDictionary(const std::string& path) const {
  const auto hostPath = root_.hostPath(path);
  if (!hostPath) return std::nullopt;
  auto reading = readDictionaryFile(*hostPath);
  auto* dictionary = std::get_if<PropertyList::Dictionary>(&reading);
  if (!dictionary) return std::nullopt;
  return std::move(*dictionary);
}

bool PlistFiles::writeDictionary(const std::string& path,
                                 const PropertyList::Dictionary& dictionary) {
  const auto hostPath = root_.hostPath(path);
  if (!hostPath) return false;
  const auto content = serializePropertyList(dictionary);
  return content && writeDurably(*hostPath, *content);
}

}  // namespace sentrel::storage
