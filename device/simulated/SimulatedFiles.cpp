#include "device/simulated/SimulatedFiles.h"

#include <utility>

#include "device/storage/DeviceRoot.h"
#include "device/storage/PropertyListCoding.h"

namespace sentrel::simulated {

bool SimulatedFiles::writeDictionary(const std::string& path,
                                     const PropertyList::Dictionary& dictionary) {
  if (writesFail_ || isLocked_ || !storage::DeviceRoot("/").hostPath(path)) return false;
  const auto content = storage::serializePropertyList(dictionary);
  if (!content) return false;
  auto reading = storage::parsePropertyList(*content);
  auto& written = std::get<PropertyList>(reading);
  put(path, std::move(*written.as<PropertyList::Dictionary>()));
  ++writeCount_;
  return true;
}

}  // namespace sentrel::simulated
