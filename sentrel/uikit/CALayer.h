#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/CAAnimation.h"
#include "sentrel/uikit/UIColor.h"

namespace sentrel {

/// The looks of a view's own rectangle, and the animations on it.
class SENTREL_API CALayer {
 public:
  double cornerRadius() const noexcept { return cornerRadius_; }
  void setCornerRadius(double radius) noexcept { cornerRadius_ = radius; }
  double borderWidth() const noexcept { return borderWidth_; }
  void setBorderWidth(double width) noexcept { borderWidth_ = width; }
  /// None is black.
  const std::optional<UIColor>& borderColor() const noexcept { return borderColor_; }
  void setBorderColor(std::optional<UIColor> color) { borderColor_ = color; }
  bool masksToBounds() const noexcept { return masksToBounds_; }
  void setMasksToBounds(bool value) noexcept { masksToBounds_ = value; }

  /// Records `animation` as beginning `delay` from now, in place of the one under `key`.
  void addAnimation(CAAnimation animation, std::string key, Seconds delay = Seconds(0));

  /// The animation under `key` that has not ended, or none.
  std::optional<CAAnimation> animationForKey(std::string_view key) const;

  /// The animations that have not ended, in the order in which they were added. One that waits for
  /// its start shows its first value. The list is good until the layer's next operation.
  const std::vector<CAAnimation>& animations() const;

  void removeAnimationForKey(std::string_view key);
  void removeAllAnimations();

 private:
  void dropEnded() const;

  double cornerRadius_ = 0;
  double borderWidth_ = 0;
  std::optional<UIColor> borderColor_;
  bool masksToBounds_ = false;
  /// Whoever looks at them drops those that have ended.
  mutable std::vector<CAAnimation> animations_;
};

}  // namespace sentrel
