#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "sentrel/platform/Export.h"
#include "sentrel/platform/Geometry.h"
#include "sentrel/platform/Seconds.h"
#include "sentrel/uikit/CGAffineTransform.h"
#include "sentrel/uikit/UIColor.h"

namespace sentrel {

/// How an animation's progress follows time.
struct SENTREL_API CATiming {
  enum class Curve { linear, easeInEaseOut, spring };

  Curve curve = Curve::easeInEaseOut;
  /// Of a spring: 1 comes to rest without swinging, nearer to 0 swings longer.
  double damping = 1;
  /// Of a spring: distances between start and end, a second.
  double initialVelocity = 0;

  /// The progress, 0 at the start and 1 at the end, after `fraction` (0 to 1) of `duration`. A
  /// spring passes 1 on its way.
  double progress(double fraction, Seconds duration) const noexcept;

  friend bool operator==(const CATiming&, const CATiming&) = default;
};

/// The record of one animation on a layer. The layer holds the end state already; the record says
/// what is to be seen until then.
struct SENTREL_API CAAnimation {
  using Value = std::variant<double, CGRect, CGAffineTransform, UIColor>;

  enum class Kind {
    /// The property at `keyPath` runs through `values`, evenly spaced in time; from and to where
    /// there are two.
    values,
    /// The layer's new content pushes its old content out, coming from the right.
    pushFromRight
  };

  Kind kind = Kind::values;
  /// "frame" (CGRect), "alpha" (double), "transform" (CGAffineTransform), "backgroundColor"
  /// (UIColor), or "transform.translation.x" (double, points).
  std::string keyPath;
  std::vector<Value> values;
  Seconds duration{0.25};
  CATiming timing;

  /// The rest is filled in where the animation is added to a layer.
  std::string key;
  /// When it begins to run; later than when it was added where there is a delay.
  SteadyTime start{};
  /// Set when the animation is taken away before its end. Null where nobody asks.
  std::shared_ptr<bool> interrupted;

  static CAAnimation keyframes(std::string keyPath, const std::vector<double>& values,
                               Seconds duration, CATiming timing);
  static CAAnimation pushFromRight(Seconds duration, CATiming timing);

  SteadyTime end() const noexcept { return start + duration; }

  /// The progress at `now`; 0 before the start and 1 from the end on.
  double progress(SteadyTime now) const noexcept;

  /// The animated property at `now`; 0 for the kind that has no values. System colours are mixed as
  /// they look now.
  Value value(SteadyTime now) const;
};

}  // namespace sentrel
