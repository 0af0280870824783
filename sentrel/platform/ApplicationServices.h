#pragma once

#include <string>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/PropertyList.h"

namespace sentrel {

/// The service that ends applications.
class SENTREL_API BackBoardServices {
 public:
  virtual ~BackBoardServices() = default;

  /// BKSTerminateApplicationForReasonAndReportWithDescription, with no description.
  virtual void terminateApplication(const std::string& bundleIdentifier, int reason,
                                    bool report) = 0;
};

/// The service that opens applications.
class SENTREL_API FBSOpenApplicationService {
 public:
  virtual ~FBSOpenApplicationService() = default;

  /// Returns at once; nobody hears how it went.
  virtual void openApplication(const std::string& bundleIdentifier,
                               const PropertyList::Dictionary& options) = 0;
};

}  // namespace sentrel
