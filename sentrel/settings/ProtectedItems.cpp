#include "sentrel/settings/ProtectedItems.h"

#include <utility>

namespace sentrel {

ProtectedItems::ProtectedItems(PropertyList::Array elements) : others_(std::move(elements)) {
  std::erase_if(others_, [this](const PropertyList& element) {
    const auto* text = element.as<std::string>();
    if (text) add(*text);
    return text != nullptr;
  });
  others_.shrink_to_fit();
}

PropertyList::Array ProtectedItems::asArray() const {
  PropertyList::Array elements(members_.begin(), members_.end());
  elements.insert(elements.end(), others_.begin(), others_.end());
  return elements;
}

}  // namespace sentrel
