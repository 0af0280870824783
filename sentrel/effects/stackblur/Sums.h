// The running sums of a register of lines, for three classes of radii. Part of Kernel.h.
//
// Each class has a State, the sum S of the weighted values around one place and its slope D, the
// difference to the sum at the next, of which
//   start(pixels)  is the one where every pixel around is the same,
//   step(…)        moves it on by one place i, given the pixels i + r + 2, i + 1 and i − r,
//   mean(state)    is S divided by the sum of the weights, with 0 in byte 3.

#pragma once

#include "sentrel/effects/stackblur/Division.h"
#include "sentrel/effects/stackblur/Registers.h"

namespace sentrel::stackblur {
namespace {

/// D += v[i + r + 2] − 2 v[i + 1] + v[i − r].
inline void bend(Split& slope, Words ahead, Words next, Words behind) {
  const Split a = split(ahead);
  const Split n = split(next);
  const Split b = split(behind);
  slope.even += a.even - n.even + (b.even - n.even);
  slope.odd += a.odd - n.odd + (b.odd - n.odd);
}

/// Sums of 16 bits, two values to a pixel's lane: up to a radius of 15.
class ShortSums {
 public:
  struct State {
    Split sum;
    Split slope;
  };

  explicit ShortSums(std::uint32_t radius)
      : weights_(static_cast<std::uint16_t>(weightsOf(radius))),
        division_(multiplyHighDivision(weightsOf(radius))),
        evenFactor_(Halves{} + division_.factor),
        // Byte 3 lies in the upper half of each odd lane, and becomes 0.
        oddFactor_(Halves(Words{} + division_.factor)) {}

  State start(Words pixels) const {
    const Split values = split(pixels);
    return {{values.even * weights_ + division_.bias, values.odd * weights_ + division_.bias}, {}};
  }

  static void step(State& state, Words ahead, Words next, Words behind) {
    state.sum.even += state.slope.even;
    state.sum.odd += state.slope.odd;
    bend(state.slope, ahead, next, behind);
  }

  Words mean(const State& state) const {
    const Halves even = multiplyHigh(state.sum.even, evenFactor_) >> division_.shift;
    // Not down and up again: masks are quicker than shifts.
    const Halves odd = multiplyHigh(state.sum.odd, oddFactor_) << (8 - division_.shift) & 0xFF00;
    return Words(even | odd);
  }

 private:
  std::uint16_t weights_;
  MultiplyHighDivision division_;
  Halves evenFactor_;
  Halves oddFactor_;
};

/// Sums of 32 bits, slopes of 16: up to a radius of 126.
class MediumSums {
 public:
  struct State {
    Spread sum;
    Split slope;
  };

  explicit MediumSums(std::uint32_t radius)
      : weights_(weightsOf(radius)), reciprocal_(reciprocal(weights_)) {}

  State start(Words pixels) const {
    const Spread values = spread(pixels);
    return {{values.byte0 * weights_, values.byte1 * weights_, values.byte2 * weights_}, {}};
  }

  static void step(State& state, Words ahead, Words next, Words behind) {
    state.sum.byte0 += lower(state.slope.even);
    state.sum.byte1 += lower(state.slope.odd);
    state.sum.byte2 += upper(state.slope.even);
    bend(state.slope, ahead, next, behind);
  }

  Words mean(const State& state) const {
    return gather(
        {quotient(state.sum.byte0), quotient(state.sum.byte1), quotient(state.sum.byte2)});
  }

 private:
  static Words lower(Halves slopes) { return Words(SignedWords(slopes) << 16 >> 16); }
  static Words upper(Halves slopes) { return Words(SignedWords(slopes) >> 16); }

  Words quotient(Words sum) const {
    const Floats exact = __builtin_convertvector(SignedWords(sum), Floats);
    return Words(__builtin_convertvector(exact * reciprocal_, SignedWords));
  }

  std::uint32_t weights_;
  float reciprocal_;
};

/// All in 32 bits, with the processor's own division: for any radius whose sums fit.
class LongSums {
 public:
  struct State {
    Spread sum;
    Spread slope;
  };

  explicit LongSums(std::uint32_t radius) : weights_(weightsOf(radius)) {}

  State start(Words pixels) const {
    const Spread values = spread(pixels);
    return {{values.byte0 * weights_, values.byte1 * weights_, values.byte2 * weights_}, {}};
  }

  static void step(State& state, Words ahead, Words next, Words behind) {
    state.sum.byte0 += state.slope.byte0;
    state.sum.byte1 += state.slope.byte1;
    state.sum.byte2 += state.slope.byte2;
    const Spread a = spread(ahead);
    const Spread n = spread(next);
    const Spread b = spread(behind);
    state.slope.byte0 += a.byte0 - n.byte0 + (b.byte0 - n.byte0);
    state.slope.byte1 += a.byte1 - n.byte1 + (b.byte1 - n.byte1);
    state.slope.byte2 += a.byte2 - n.byte2 + (b.byte2 - n.byte2);
  }

  Words mean(const State& state) const {
    return gather(
        {state.sum.byte0 / weights_, state.sum.byte1 / weights_, state.sum.byte2 / weights_});
  }

 private:
  std::uint32_t weights_;
};

}  // namespace
}  // namespace sentrel::stackblur
