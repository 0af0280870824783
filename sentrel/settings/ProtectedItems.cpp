#include "sentrel/settings/ProtectedItems.h"

namespace sentrel {

ProtectedItems::ProtectedItems(const PropertyList* array) {
  const auto* elements = array ? array->as<PropertyList::Array>() : nullptr;
  if (!elements) return;
  for (const PropertyList& element : *elements) {
    if (const auto* text = element.as<std::string>())
      add(*text);
    else
      others_.push_back(element);
  }
}

PropertyList::Array ProtectedItems::asArray() const {
  PropertyList::Array elements(members_.begin(), members_.end());
  elements.insert(elements.end(), others_.begin(), others_.end());
  return elements;
}

}  // namespace sentrel
