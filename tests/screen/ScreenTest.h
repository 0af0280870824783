#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "device/screen/Painter.h"
#include "device/screen/PangoTextMeasuring.h"
#include "tests/uikit/UIKitTest.h"

namespace sentrel::screen {

using testing::ElementsAre;

/// The smallest rectangle around every pixel that shows anything, in pixels; none where none does.
struct Ink {
  int left, top, right, bottom;

  int width() const { return right - left; }
  int height() const { return bottom - top; }
  double midX() const { return (left + right) / 2.0; }
  double midY() const { return (top + bottom) / 2.0; }

  friend bool operator==(const Ink&, const Ink&) = default;
};

inline std::optional<Ink> inkOf(const Canvas& canvas) {
  Ink ink{canvas.width(), canvas.height(), 0, 0};
  for (int y = 0; y < canvas.height(); ++y)
    for (int x = 0; x < canvas.width(); ++x) {
      if (canvas.pixel(x, y) >> 24 < 32) continue;
      ink.left = std::min(ink.left, x);
      ink.top = std::min(ink.top, y);
      ink.right = std::max(ink.right, x + 1);
      ink.bottom = std::max(ink.bottom, y + 1);
    }
  if (ink.right == 0) return std::nullopt;
  return ink;
}

inline constexpr std::uint32_t opaqueRed = 0xFFFF0000;
inline constexpr std::uint32_t opaqueBlue = 0xFF0000FF;
inline constexpr std::uint32_t opaqueWhite = 0xFFFFFFFF;

inline int channel(std::uint32_t pixel, int shift) {
  return static_cast<int>(pixel >> shift & 255);
}
inline int redOf(std::uint32_t pixel) {
  return channel(pixel, 16);
}
inline int blueOf(std::uint32_t pixel) {
  return channel(pixel, 0);
}
inline int alphaOf(std::uint32_t pixel) {
  return channel(pixel, 24);
}

/// How many pixels differ between two pictures of one size.
inline int differingPixels(const Canvas& one, const Canvas& other) {
  int count = 0;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      count += one.pixel(x, y) != other.pixel(x, y) ? 1 : 0;
  return count;
}

/// Puts a test inside a process of a simulated device that measures text as it is drawn.
class ScreenTest : public UIKitTest {
 protected:
  ScreenTest() {
    process_->process().platform().textMeasuring = std::make_shared<PangoTextMeasuring>(fonts());
  }

  static const std::shared_ptr<const PinnedFonts>& fonts() {
    static const auto pinned = std::make_shared<const PinnedFonts>();
    return pinned;
  }

  static std::shared_ptr<UIView> makeBox(const CGRect& frame, const UIColor& color) {
    auto box = std::make_shared<UIView>(frame);
    box->setBackgroundColor(color);
    return box;
  }
  static UIColor red() { return UIColor::colorWithRed(1, 0, 0, 1); }
  static UIColor blue() { return UIColor::colorWithRed(0, 0, 1, 1); }

  /// `view` on an empty canvas of 100 by 100 points at scale 1, as it stands now.
  Canvas paint(const UIView& view, UIUserInterfaceStyle style = UIUserInterfaceStyle::light) {
    Canvas canvas({100, 100}, 1);
    painter_.paint(view, canvas, {.style = style, .moment = device_.time().steadyNow()});
    return canvas;
  }

  /// Some pixels of such a picture.
  std::vector<std::uint32_t> pixels(const UIView& view,
                                    std::initializer_list<std::pair<int, int>> places) {
    const Canvas canvas = paint(view);
    std::vector<std::uint32_t> found;
    for (const auto& [x, y] : places)
      found.push_back(canvas.pixel(x, y));
    return found;
  }

  Painter painter_{fonts()};
};

}  // namespace sentrel::screen
