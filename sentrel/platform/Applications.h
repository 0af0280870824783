#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "sentrel/platform/Export.h"

namespace sentrel {

class SBApplication;

/// Something with a name that the home screen shows: an icon or an application.
class SENTREL_API DisplayItem {
 public:
  virtual ~DisplayItem() = default;

  // Operations that an item may not answer.
  std::function<std::optional<std::string>()> displayName;
  /// May answer null.
  std::function<std::shared_ptr<SBApplication>()> application;
};

/// An installed application.
class SENTREL_API SBApplication : public DisplayItem {
 public:
  virtual const std::string& bundleIdentifier() const = 0;

  /// Whether it came with the system.
  virtual bool isSystemApplication() const = 0;
};

/// The home screen's list of applications.
class SENTREL_API SBApplicationController {
 public:
  virtual ~SBApplicationController() = default;

  // Operations that the controller may not answer. A look-up answers null for an identifier that
  // is not installed, and may raise a PlatformException.
  std::function<std::shared_ptr<SBApplication>(const std::string& identifier)>
      applicationWithDisplayIdentifier;
  std::function<std::shared_ptr<SBApplication>(const std::string& identifier)>
      applicationWithBundleIdentifier;
  /// applicationService:suspendApplicationWithBundleIdentifier:, with no service.
  std::function<void(const std::string& bundleIdentifier)> suspendApplicationWithBundleIdentifier;
};

/// The application object of the home-screen process itself. Each operation may be missing.
class SENTREL_API SpringBoardApplication {
 public:
  virtual ~SpringBoardApplication() = default;

  std::function<bool()> isLocked;
  /// Null when the home screen itself is at the front.
  std::function<std::shared_ptr<SBApplication>()> _accessibilityFrontMostApplication;
  std::function<void()> _simulateHomeButtonPress;
  std::function<void(const std::string& identifier, bool suspended)>
      launchApplicationWithIdentifier;
  /// How many scenes are connected.
  std::function<std::size_t()> connectedScenes;
};

}  // namespace sentrel
