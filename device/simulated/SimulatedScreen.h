#pragma once

#include <optional>

#include "sentrel/platform/Screen.h"

namespace sentrel::simulated {

/// A screen that is what it is set to: at first a phone's, in light mode.
class SimulatedScreen final : public Screen {
 public:
  void setBounds(CGRect bounds) noexcept { bounds_ = bounds; }
  void setScale(double scale) noexcept { scale_ = scale; }
  void setUserInterfaceIdiom(std::optional<UIUserInterfaceIdiom> idiom) noexcept { idiom_ = idiom; }
  void setUserInterfaceStyle(std::optional<UIUserInterfaceStyle> style) noexcept { style_ = style; }

  CGRect bounds() const override { return bounds_; }
  double scale() const override { return scale_; }
  std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() const override { return idiom_; }
  std::optional<UIUserInterfaceStyle> userInterfaceStyle() const override { return style_; }

 private:
  CGRect bounds_{{0, 0}, {375, 667}};
  double scale_ = 2;
  std::optional<UIUserInterfaceIdiom> idiom_ = UIUserInterfaceIdiom::phone;
  std::optional<UIUserInterfaceStyle> style_ = UIUserInterfaceStyle::light;
};

}  // namespace sentrel::simulated
