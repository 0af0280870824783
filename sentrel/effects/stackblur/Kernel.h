// The stack blur itself, for whatever instruction set it is compiled under. Each form is a source
// file that includes this one.
//
// Why it is exact
//
// The algorithm, as it is written down, walks along each row with a ring of 2r + 1 samples and
// three sums, looks each mean up in a table, keeps the means in three planes of 32-bit numbers, and
// does the same down each column. Here nothing of that is left, and yet every byte is the same:
//
// 1. What it keeps is, at place i, S(i) = Σ (r + 1 − |k|) v(i + k), for k from −r to r, where v
// goes
//    on beyond both ends with its outermost value. The table entry is floor(S / (r + 1)²), and the
//    weights add up to (r + 1)²; so each pass yields a mean of bytes, which is a byte. The planes
//    become bytes, and nothing is lost between the passes.
//
// 2. The triangle of weights has a slope of 1 up to its middle and of −1 behind it. So
//      S(i + 1) = S(i) + D(i),            D(i) = Σ v(i + 1 … i + r + 1) − Σ v(i − r … i),
//      D(i + 1) = D(i) + v(i + r + 2) − 2 v(i + 1) + v(i − r):
//    two additions and three values of the line itself, and no ring of samples. Far out before the
//    line all values are v(0), there S = (r + 1)² v(0) and D = 0; r + 1 steps from there lead to
//    place 0, with all that lies before it equal to v(0).
//
// 3. All of it is linear, so that it may be computed modulo a power of two as long as the result
//    fits: S ≤ 255 (r + 1)² and |D| ≤ 255 (r + 1). Up to radius 15, S fits 16 bits; up to 126, D
//    fits 16 bits with a sign, and S is a whole number that a float holds. Up to 4094, S fits 32
//    bits. The divisions by multiplying (Division.h) are tried in the tests for every S that there
//    is.
//
// 4. Several lines run side by side, one pixel of each in a register. What a line does depends on
//    no other, so that it is all the same which lines these are.
//
// How it is quick
//
// A register of pixels of neighbouring columns is what the pass down the columns needs, as it lies
// in memory. The pass along the rows takes as many rows at once as a register has pixels, and turns
// them, four columns at a time, so that it runs the same sums; its means are turned back into a
// ring of finished rows, some 2r + 26 of them. From there the columns are done, in blocks of 16
// rows, one register wide: the sums stay in registers through a block. So the picture is read once
// and written once, and what is written has been read before: the ring is ahead by r + 1 rows.
// Inside the ring the registers of one strip of columns lie together, row behind row, as the
// columns read them.

#pragma once

#include <new>

#include "sentrel/effects/stackblur/Forms.h"
#include "sentrel/effects/stackblur/Sums.h"

// Everything below is this form's own, down to the smallest helper: a function that another file
// has too, say of the standard library, might be kept from here and run where its instructions are
// not.

namespace sentrel::stackblur {
namespace {

constexpr std::size_t cacheLine = 64;
constexpr std::size_t blockRows = 16;

inline std::size_t smaller(std::size_t a, std::size_t b) {
  return a < b ? a : b;
}

inline std::size_t roundedUp(std::size_t count, std::size_t step) {
  return (count + step - 1) / step * step;
}

/// Uninitialised, on a cache line's boundary.
template <class Item>
class Storage {
 public:
  explicit Storage(std::size_t count)
      : items_(static_cast<Item*>(::operator new(count * sizeof(Item), alignment))) {}
  ~Storage() { ::operator delete(items_, alignment); }
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  Item* get() const { return items_; }

 private:
  static constexpr std::align_val_t alignment{cacheLine};

  Item* items_;
};

/// Rows are counted from the first of those above the band.
template <class Sums>
class BandBlur final : public PreparedBlur {
 public:
  BandBlur(const Band& band, std::size_t radius)
      : band_(band),
        sums_(static_cast<std::uint32_t>(radius)),
        radius_(radius),
        pitch_(band.width * 4),
        first_(band.above.size() / pitch_),
        end_(first_ + band.height),
        rows_(end_ + band.below.size() / pitch_),
        strips_(roundedUp(band.width, lanes) / lanes),
        ringRows_(roundedUp(smaller(2 * radius + 2 + blockRows + lanes, rows_), lanes)),
        stripBytes_(ringRows_ * registerBytes),
        ring_(strips_ * stripBytes_),
        line_(radius + strips_ * lanes + radius + 2),
        states_(strips_) {}

  void run() noexcept override {
    begin();
    for (std::size_t row = first_; row < end_; row += blockRows) {
      const std::size_t count = smaller(blockRows, end_ - row);
      finishRows(row + count + radius_ + 2);
      blurBlock(row, count);
    }
  }

 private:
  using State = typename Sums::State;

  /// The finished rows that a step of the columns from one row to the next takes in.
  struct Neighbours {
    const std::uint8_t* ahead;
    const std::uint8_t* next;
    const std::uint8_t* behind;
  };

  const std::uint8_t* source(std::size_t row) const {
    if (row < first_) return band_.above.data() + row * pitch_;
    if (row < end_) return band_.rows + (row - first_) * pitch_;
    return band_.below.data() + (row - end_) * pitch_;
  }

  /// Where the row's first register lies; each strip holds one of every row.
  std::uint8_t* ringRow(std::size_t row) const {
    return ring_.get() + row % ringRows_ * registerBytes;
  }

  const std::uint8_t* finishedRow(std::ptrdiff_t row) const {
    return ringRow(row < 0 ? 0 : smaller(static_cast<std::size_t>(row), rows_ - 1));
  }

  Neighbours neighbours(std::ptrdiff_t row) const {
    const auto radius = static_cast<std::ptrdiff_t>(radius_);
    return {finishedRow(row + radius + 2), finishedRow(row + 1), finishedRow(row - radius)};
  }

  static void step(State& state, const Neighbours& rows, std::size_t byte) {
    Sums::step(state, load<Words>(rows.ahead + byte), load<Words>(rows.next + byte),
               load<Words>(rows.behind + byte));
  }

  // --- Along the rows ------------------------------------------------------------------------

  /// Puts all rows before `end` into the ring, as far as there are so many.
  void finishRows(std::size_t end) {
    for (; finished_ < smaller(end, rows_); finished_ += lanes) {
      Rows rows;
      for (std::size_t lane = 0; lane < lanes; ++lane)
        rows.at[lane] = source(smaller(finished_ + lane, rows_ - 1));
      turnLine(rows);
      blurLine(ringRow(finished_), rows.at[lanes - 1] + pitch_);
    }
  }

  /// The columns of these rows as registers, with the outermost ones going on on either side.
  void turnLine(const Rows& rows) {
    Words* const columns = line_.get() + radius_;
    const std::size_t whole = band_.width / 4 * 4;
    for (std::size_t x = 0; x < whole; x += 4)
      putColumns(columns + x, loadColumns(rows, x * 4));
    if (whole < band_.width) turnLastColumns(rows, whole);
    for (std::size_t i = 0; i < radius_; ++i)
      line_.get()[i] = columns[0];
    for (std::size_t i = band_.width; i < strips_ * lanes + radius_ + 2; ++i)
      columns[i] = columns[band_.width - 1];
  }

  static void putColumns(Words* columns, const Tile& tile) {
    for (std::size_t i = 0; i < 4; ++i)
      columns[i] = tile.at[i];
  }

  /// Fewer than four: nothing is read beyond the rows' ends.
  void turnLastColumns(const Rows& rows, std::size_t x) {
    std::uint8_t ends[lanes][16] = {};
    Rows in;
    for (std::size_t lane = 0; lane < lanes; ++lane) {
      __builtin_memcpy(ends[lane], rows.at[lane] + x * 4, (band_.width - x) * 4);
      in.at[lane] = ends[lane];
    }
    putColumns(line_.get() + radius_ + x, loadColumns(in, 0));
  }

  /// The rows that come next are fetched meanwhile: turning them would wait for memory.
  void blurLine(std::uint8_t* out, const std::uint8_t* upcoming) const {
    // Copies, so that all that the loops need beside the pixels stays in registers: what is stored
    // as bytes might else be any member, and each would be read anew.
    const Sums sums = sums_;
    const std::size_t radius = radius_;
    const Words* behind = line_.get();
    State state = sums.start(behind[radius]);
    for (std::size_t i = 1; i <= radius + 1; ++i)
      Sums::step(state, behind[radius + i], behind[radius], behind[radius]);
    const std::size_t stripBytes = stripBytes_;
    for (const std::uint8_t* const end = out + strips_ * stripBytes; out < end; out += stripBytes)
      for (std::size_t byte = 0; byte < registerBytes; byte += 16, behind += 4) {
        for (std::size_t i = 0; i < lanes / 4; ++i, upcoming += cacheLine)
          __builtin_prefetch(upcoming);
        Tile means;
        for (std::size_t i = 0; i < 4; ++i) {
          means.at[i] = sums.mean(state);
          Sums::step(state, behind[i + 2 * radius + 2], behind[i + radius + 1], behind[i]);
        }
        storeColumns(out + byte, means);
      }
  }

  // --- Down the columns ----------------------------------------------------------------------

  /// The state of each column at the band's first row.
  void begin() {
    finishRows(first_ + radius_ + 2);
    for (std::size_t strip = 0; strip < strips_; ++strip)
      states_.get()[strip] = sums_.start(load<Words>(ringRow(0) + strip * stripBytes_));
    const auto first = static_cast<std::ptrdiff_t>(first_);
    for (std::ptrdiff_t row = -1 - static_cast<std::ptrdiff_t>(radius_); row < first; ++row) {
      const Neighbours rows = neighbours(row);
      for (std::size_t strip = 0; strip < strips_; ++strip)
        step(states_.get()[strip], rows, strip * stripBytes_);
    }
  }

  void blurBlock(std::size_t row, std::size_t count) {
    Neighbours rows[blockRows];
    for (std::size_t i = 0; i < count; ++i)
      rows[i] = neighbours(static_cast<std::ptrdiff_t>(row + i));
    std::uint8_t* const pixels = band_.rows + (row - first_) * pitch_;
    const std::size_t whole = band_.width / lanes;
    for (std::size_t strip = 0; strip < whole; ++strip)
      blurStrip(rows, count, strip, pixels + strip * registerBytes, pitch_);
    if (whole < strips_) blurLastStrip(rows, count, pixels + whole * registerBytes);
  }

  void blurStrip(const Neighbours* rows, std::size_t count, std::size_t strip, std::uint8_t* pixels,
                 std::size_t pitch) {
    const Sums sums = sums_;
    const Words byte3 = Words{} + 0xFF000000;
    const std::size_t byte = strip * stripBytes_;
    State state = states_.get()[strip];
    for (std::size_t i = 0; i < count; ++i, pixels += pitch) {
      // The processor does not see that so many rows go on side by side.
      __builtin_prefetch(pixels + 2 * cacheLine, /*for writing*/ 1);
      store(pixels, sums.mean(state) | (load<Words>(pixels) & byte3));
      step(state, rows[i], byte);
    }
    states_.get()[strip] = state;
  }

  /// Narrower than a register: in a copy, so that nothing beyond the rows' ends is touched.
  void blurLastStrip(const Neighbours* rows, std::size_t count, std::uint8_t* pixels) {
    std::uint8_t copy[blockRows * registerBytes] = {};
    const std::size_t bytes = band_.width % lanes * 4;
    for (std::size_t i = 0; i < count; ++i)
      __builtin_memcpy(copy + i * registerBytes, pixels + i * pitch_, bytes);
    blurStrip(rows, count, strips_ - 1, copy, registerBytes);
    for (std::size_t i = 0; i < count; ++i)
      __builtin_memcpy(pixels + i * pitch_, copy + i * registerBytes, bytes);
  }

  Band band_;
  Sums sums_;
  std::size_t radius_;
  std::size_t pitch_;  ///< Bytes of a row.
  std::size_t first_;  ///< The band's rows are these and those before `end_`.
  std::size_t end_;
  std::size_t rows_;    ///< With those above and below.
  std::size_t strips_;  ///< Registers that a row takes.
  std::size_t ringRows_;
  std::size_t stripBytes_;
  std::size_t finished_ = 0;  ///< Rows that have been put into the ring.
  Storage<std::uint8_t> ring_;
  Storage<Words> line_;
  Storage<State> states_;
};

inline PreparedBlur* prepareBand(const Band& band, std::size_t radius) {
  if (radius <= largestRadiusOf16BitSums) return new BandBlur<ShortSums>(band, radius);
  if (radius <= largestRadiusOf16BitSlopes) return new BandBlur<MediumSums>(band, radius);
  return new BandBlur<LongSums>(band, radius);
}

}  // namespace
}  // namespace sentrel::stackblur
