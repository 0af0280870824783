#pragma once

#include <memory>
#include <string>

#include "device/screen/ApplicationWindow.h"
#include "device/screen/PinnedFonts.h"
#include "programs/common/RealProcess.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::programs {

/// What the home-screen process has on its screen: icons, and prompts above them.
class HomeScreenView {
 public:
  /// `self` outlives the view.
  explicit HomeScreenView(RealProcess& self);

  /// Opens an application as a tap on its icon would, and prints what became of it.
  void launch(const std::string& bundleIdentifier);

  /// Shows the screen in a window of the desktop, for people to use, until it is closed. Throws
  /// std::runtime_error where there is no display.
  void openWindow();

 private:
  void pumpLater();

  RealProcess& self_;
  std::shared_ptr<const screen::PinnedFonts> fonts_;
  std::shared_ptr<UIWindow> home_;
  std::unique_ptr<screen::ApplicationWindow> window_;
  bool isOpen_ = false;
  /// Ends what waits on the loop.
  std::shared_ptr<HomeScreenView*> alive_;
};

}  // namespace sentrel::programs
