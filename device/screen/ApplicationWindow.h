#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "device/screen/Painter.h"
#include "device/screen/UserInput.h"
#include "device/screen/Window.h"
#include "sentrel/platform/ProcessContext.h"

namespace sentrel::screen {

/// The user interface of one process in a window of the desktop, for people to use.
///
/// It paints when something has changed or moves, and lays out before it paints. Its owner's loop
/// calls pump() some sixty times a second, on the main thread, outside of any ProcessContext::Scope
/// or inside the same process's.
class ApplicationWindow {
 public:
  struct Options {
    std::string title;
    GlyphKind glyphKind = GlyphKind::fingerprint;
    /// May be empty.
    std::function<void()> pressHome;
    std::function<void()> close;
  };

  /// How long to wait between two pumps.
  static constexpr Seconds interval{1.0 / 60};

  /// `process` has a screen and outlives the window. Throws std::runtime_error, which says what to
  /// do, where there is no display.
  ApplicationWindow(ProcessContext& process, const std::shared_ptr<const PinnedFonts>& fonts,
                    Options options);

  void pump() { window_.pump(); }

 private:
  Window::Handlers makeHandlers(Options& options);
  bool needsDisplay();
  void paint(Canvas& canvas);

  ProcessContext& process_;
  UIApplication& application_;
  GlyphKind glyphKind_;
  Painter painter_;
  UserInput input_;
  std::optional<std::size_t> shown_;
  bool wasAnimating_ = false;
  Window window_;
};

}  // namespace sentrel::screen
