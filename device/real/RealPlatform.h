#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/bus/BusConnection.h"
#include "device/loop/RunLoop.h"
#include "device/screen/PinnedFonts.h"
#include "sentrel/platform/Platform.h"

namespace sentrel::real {

/// The screen that a process shows itself on.
struct RealScreen {
  /// In points, and the pixels a point.
  CGSize size{375, 667};
  double scale = 2;
  UIUserInterfaceIdiom idiom = UIUserInterfaceIdiom::phone;
  UIUserInterfaceStyle style = UIUserInterfaceStyle::light;
};

struct RealPlatformOptions {
  /// Who the process is.
  std::string bundleIdentifier;
  /// The folder of this machine under which the paths of the device lie.
  std::string root = "/";
  /// bus::findBus() or bus::HomeScreenBus tells it. Empty: nothing is asked or heard.
  std::string busAddress;
  /// Called on the main queue, once, with the reason, when the bus is not or no longer there.
  std::function<void(const std::string& reason)> onBusLost;
  /// None for a process that shows nothing.
  std::optional<RealScreen> screen;
  std::string systemVersion = "14.0";
};

/// One process's platform on this machine: files under a root, cipher, case mapping, clock, run
/// loop and bus, and, for a process with a screen, the painter's sizes of text and its glyph. What
/// this machine has not stays null, and texts are not translated: whoever has more puts it into
/// what platform() answers.
///
/// Make it, and let go of it, on the thread that runs the loop.
class RealPlatform {
 public:
  /// Throws std::runtime_error where a screen is asked for and the fonts are not there.
  explicit RealPlatform(const RealPlatformOptions& options);

  /// For making a Process, which may outlive this object.
  const Platform& platform() const noexcept { return platform_; }

  loop::RunLoop& loop() noexcept { return *loop_; }
  bus::BusConnection& connection() noexcept { return *connection_; }

  /// What an ApplicationWindow draws with; null without a screen.
  const std::shared_ptr<const screen::PinnedFonts>& fonts() const noexcept { return fonts_; }

 private:
  void addScreen(const RealScreen& screen);

  std::shared_ptr<loop::RunLoop> loop_;
  std::shared_ptr<bus::BusConnection> connection_;
  std::shared_ptr<const screen::PinnedFonts> fonts_;
  Platform platform_;
};

}  // namespace sentrel::real
