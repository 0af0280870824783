#include "sentrel/uikit/CAAnimation.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sentrel/uikit/UIScreen.h"

namespace sentrel {
namespace {

double mix(double from, double to, double share) {
  return from + (to - from) * share;
}

/// The cubic whose control points are (0.42, 0) and (0.58, 1): the time at which its x is
/// `fraction` is found by halving, and its y there is the progress.
double easeInEaseOut(double fraction) {
  double low = 0;
  double high = 1;
  for (int step = 0; step < 40; ++step) {
    const double t = (low + high) / 2;
    const double x = 3 * (1 - t) * (1 - t) * t * 0.42 + 3 * (1 - t) * t * t * 0.58 + t * t * t;
    (x < fraction ? low : high) = t;
  }
  return 3 * (1 - low) * low * low + low * low * low;
}

/// A damped oscillator that starts at 0 with a given speed and is drawn to 1. Its stiffness is such
/// that the swing has faded to a thousandth when the duration is over.
double spring(double fraction, double damping, double velocity) {
  constexpr double restingDecay = 6.907755278982137;  // ln 1000
  const double ratio = std::clamp(damping, 0.01, 1.0);
  const double decay = restingDecay;
  const double fade = std::exp(-decay * fraction);
  if (ratio == 1) return 1 - fade * (1 + (decay - velocity) * fraction);
  const double swing = decay / ratio * std::sqrt(1 - ratio * ratio);
  return 1 - fade * (std::cos(swing * fraction) +
                     (decay - velocity) / swing * std::sin(swing * fraction));
}

struct Mix {
  double share;

  CAAnimation::Value operator()(double from, double to) const { return mix(from, to, share); }

  CAAnimation::Value operator()(const CGRect& from, const CGRect& to) const {
    return CGRectMake(
        mix(from.origin.x, to.origin.x, share), mix(from.origin.y, to.origin.y, share),
        mix(from.size.width, to.size.width, share), mix(from.size.height, to.size.height, share));
  }

  CAAnimation::Value operator()(const CGAffineTransform& from, const CGAffineTransform& to) const {
    return CGAffineTransform{mix(from.a, to.a, share),   mix(from.b, to.b, share),
                             mix(from.c, to.c, share),   mix(from.d, to.d, share),
                             mix(from.tx, to.tx, share), mix(from.ty, to.ty, share)};
  }

  CAAnimation::Value operator()(const UIColor& from, const UIColor& to) const {
    const auto style =
        UIScreen::mainScreen().userInterfaceStyle().value_or(UIUserInterfaceStyle::light);
    const auto start = from.resolved(style);
    const auto end = to.resolved(style);
    return UIColor::colorWithRed(mix(start.red, end.red, share), mix(start.green, end.green, share),
                                 mix(start.blue, end.blue, share),
                                 mix(start.alpha, end.alpha, share));
  }

  /// Values of different types do not mix: the end state shows.
  template <class From, class To>
  CAAnimation::Value operator()(const From&, const To& to) const {
    return to;
  }
};

}  // namespace

double CATiming::progress(double fraction, Seconds duration) const noexcept {
  if (fraction <= 0) return 0;
  if (fraction >= 1) return 1;
  switch (curve) {
    case Curve::linear:
      return fraction;
    case Curve::easeInEaseOut:
      return easeInEaseOut(fraction);
    case Curve::spring:
      return spring(fraction, damping, initialVelocity * duration.count());
  }
  return 1;
}

CAAnimation CAAnimation::keyframes(std::string keyPath, const std::vector<double>& values,
                                   Seconds duration, CATiming timing) {
  CAAnimation animation;
  animation.keyPath = std::move(keyPath);
  animation.values.assign(values.begin(), values.end());
  animation.duration = duration;
  animation.timing = timing;
  return animation;
}

CAAnimation CAAnimation::pushFromRight(Seconds duration, CATiming timing) {
  CAAnimation animation = keyframes({}, {}, duration, timing);
  animation.kind = Kind::pushFromRight;
  return animation;
}

double CAAnimation::progress(SteadyTime now) const noexcept {
  if (now >= end()) return 1;
  return timing.progress((now - start) / duration, duration);
}

CAAnimation::Value CAAnimation::value(SteadyTime now) const {
  if (values.empty()) return 0.0;
  const auto last = static_cast<double>(values.size() - 1);
  const double position = progress(now) * last;
  // A spring runs beyond the ends; it does so along the line of the outermost pair.
  const double index = std::clamp(std::floor(position), 0.0, std::max(last - 1, 0.0));
  const auto first = static_cast<std::size_t>(index);
  const auto second = std::min(first + 1, values.size() - 1);
  return std::visit(Mix{position - index}, values[first], values[second]);
}

}  // namespace sentrel
