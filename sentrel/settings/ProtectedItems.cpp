#include "sentrel/settings/ProtectedItems.h"

namespace sentrel {

ProtectedItems::ProtectedItems(const PropertyList* array) {
  const auto* elements = array ? array->as<PropertyList::Array>() : nullptr;
  if (!elements) return;
  members_.reserve(elements->size());
  for (const PropertyList& element : *elements) {
    if (const auto* text = element.as<std::string>())
      members_.insert(*text);
    else
      others_.push_back(element);
  }
}

void ProtectedItems::remove(std::string_view item) {
  const auto member = members_.find(item);
  if (member != members_.end()) members_.erase(member);
}

PropertyList::Array ProtectedItems::asArray() const {
  PropertyList::Array elements(members_.begin(), members_.end());
  elements.insert(elements.end(), others_.begin(), others_.end());
  return elements;
}

}  // namespace sentrel
