#pragma once

#include <memory>
#include <string>

#include "device/screen/Canvas.h"
#include "device/screen/GlyphLook.h"
#include "device/screen/PinnedFonts.h"
#include "device/simulated/SimulatedDevice.h"
#include "sentrel/uikit/UIWindow.h"

namespace sentrel::gallery {

/// What a picture is taken of.
struct DeviceKind {
  const char* name;
  CGSize size;
  double scale;
  UIUserInterfaceIdiom idiom = UIUserInterfaceIdiom::phone;
};

inline constexpr DeviceKind phone{"phone", {375, 667}, 2};
inline constexpr DeviceKind smallPhone{"small-phone", {320, 568}, 2};
inline constexpr DeviceKind largePhone{"large-phone", {414, 896}, 2};
inline constexpr DeviceKind tablet{"tablet", {768, 1024}, 1, UIUserInterfaceIdiom::pad};

struct StageOptions {
  DeviceKind device = phone;
  UIUserInterfaceStyle style = UIUserInterfaceStyle::light;
  screen::GlyphKind sensor = screen::GlyphKind::fingerprint;
  /// Whether prompts come in the alerts of the older systems.
  bool legacyAlerts = false;
};

/// The same device, turned.
constexpr DeviceKind turned(DeviceKind device) {
  return {device.name, {device.size.height, device.size.width}, device.scale, device.idiom};
}

/// "phone-dark" and the like.
std::string describe(const StageOptions& options);

/// The home screen's process on a simulated device, with its home screen in a window of its own.
class Stage {
 public:
  Stage(const std::shared_ptr<const screen::PinnedFonts>& fonts, const StageOptions& options);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  simulated::SimulatedProcess& process() noexcept { return *process_; }
  const StageOptions& options() const noexcept { return options_; }
  const std::shared_ptr<UIWindow>& homeWindow() const noexcept { return homeWindow_; }

  /// Runs what falls due within `time`.
  void wait(Seconds time) { device_.time().advance(time); }

  /// The number pad, at the bottom of the screen.
  void showNumberPad();

  /// The keyboard of whatever field takes what is typed, at the height it has on this device; or
  /// none.
  void showKeyboard();

  /// Lays every window out and paints the screen as it is at this moment.
  screen::Canvas picture();

 private:
  void setUpDevice();

  std::shared_ptr<const screen::PinnedFonts> fonts_;
  StageOptions options_;
  simulated::SimulatedDevice device_;
  std::unique_ptr<simulated::SimulatedProcess> process_;
  std::shared_ptr<UIWindow> homeWindow_;
  std::shared_ptr<UIWindow> keyboardWindow_;
};

}  // namespace sentrel::gallery
