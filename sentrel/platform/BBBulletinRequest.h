#pragma once

#include "sentrel/platform/AssociatedObjects.h"
#include "sentrel/platform/Export.h"

namespace sentrel {

/// The system's request to show a notification. Here it only carries what others attach to it.
class SENTREL_API BBBulletinRequest : public AssociatedObjects {
 public:
  virtual ~BBBulletinRequest() = default;
};

}  // namespace sentrel
