#pragma once

#include <memory>

#include "device/screen/Canvas.h"
#include "device/screen/GlyphLook.h"
#include "device/screen/PinnedFonts.h"
#include "sentrel/platform/Screen.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/UIApplication.h"
#include "sentrel/uikit/UIView.h"

namespace sentrel::screen {

/// Paints the view model as it stands; it lays nothing out and changes nothing.
///
/// The time is proportional to the number of views. What is hidden or transparent is skipped with
/// all that is inside it, and so is what a clipping view would show outside the picture. Views of
/// no or negative size paint nothing of their own. Main thread only.
class Painter {
 public:
  struct Settings {
    /// What the system colours look like.
    UIUserInterfaceStyle style = UIUserInterfaceStyle::light;
    /// What the device has to recognise its user by.
    GlyphKind glyphKind = GlyphKind::fingerprint;
    /// Animations that have not ended by now are painted as they stand at this moment.
    SteadyTime moment{};
  };

  explicit Painter(std::shared_ptr<const PinnedFonts> fonts);

  /// Paints `view` over what `canvas` shows, the canvas standing for the view's superview.
  void paint(const UIView& view, Canvas& canvas, const Settings& settings) const;

  /// Paints the windows of `application`, back to front, each where it is on the screen.
  void paint(const UIApplication& application, Canvas& canvas, const Settings& settings) const;

 private:
  std::shared_ptr<const PinnedFonts> fonts_;
};

}  // namespace sentrel::screen
