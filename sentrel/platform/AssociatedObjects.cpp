#include "sentrel/platform/AssociatedObjects.h"

#include <utility>

namespace sentrel {

void AssociatedObjects::setAssociatedObject(const std::string& key, std::shared_ptr<void> value) {
  if (value)
    associated_.insert_or_assign(key, std::move(value));
  else
    associated_.erase(key);
}

}  // namespace sentrel
