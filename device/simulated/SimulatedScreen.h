#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "device/simulated/SimulatedSystem.h"
#include "sentrel/platform/Screen.h"

namespace sentrel::simulated {

/// A screen that is what it is set to: at first a phone's, in light mode. It has no style on a
/// system that has none.
class SimulatedScreen final : public Screen {
 public:
  explicit SimulatedScreen(std::shared_ptr<const SystemState> system)
      : system_(std::move(system)) {}

  void setBounds(CGRect bounds) noexcept { bounds_ = bounds; }
  void setScale(double scale) noexcept { scale_ = scale; }
  void setUserInterfaceIdiom(std::optional<UIUserInterfaceIdiom> idiom) noexcept { idiom_ = idiom; }
  void setUserInterfaceStyle(std::optional<UIUserInterfaceStyle> style) noexcept { style_ = style; }

  CGRect bounds() const override { return bounds_; }
  double scale() const override { return scale_; }
  std::optional<UIUserInterfaceIdiom> userInterfaceIdiom() const override { return idiom_; }
  std::optional<UIUserInterfaceStyle> userInterfaceStyle() const override {
    return hasScenes(*system_) ? style_ : std::nullopt;
  }

 private:
  std::shared_ptr<const SystemState> system_;
  CGRect bounds_{{0, 0}, {375, 667}};
  double scale_ = 2;
  std::optional<UIUserInterfaceIdiom> idiom_ = UIUserInterfaceIdiom::phone;
  std::optional<UIUserInterfaceStyle> style_ = UIUserInterfaceStyle::light;
};

}  // namespace sentrel::simulated
