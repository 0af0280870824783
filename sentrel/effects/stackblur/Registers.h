// A register of pixels and the little that is done with one. Part of Kernel.h: each form defines
// `registerBytes`, 16 or 32, and `multiplyHigh` around it. The compiler's vectors need no
// intrinsics: it makes the best of them for whatever processor it compiles for.

#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace sentrel::stackblur {
namespace {

/// Pixels of four bytes in a register.
constexpr std::size_t lanes = registerBytes / 4;

typedef std::uint32_t Words __attribute__((vector_size(registerBytes)));
typedef std::int32_t SignedWords __attribute__((vector_size(registerBytes)));
typedef float Floats __attribute__((vector_size(registerBytes)));
typedef std::uint16_t Halves __attribute__((vector_size(registerBytes)));
/// Four pixels of one row.
typedef std::uint32_t FourPixels __attribute__((vector_size(16)));

/// The upper 16 bits of each product.
inline Halves multiplyHigh(Halves a, Halves b);

template <class Register>
inline Register load(const std::uint8_t* bytes) {
  Register loaded;
  __builtin_memcpy(&loaded, bytes, sizeof loaded);
  return loaded;
}

template <class Register>
inline void store(std::uint8_t* bytes, Register stored) {
  __builtin_memcpy(bytes, &stored, sizeof stored);
}

/// Bytes 0 and 2 of each pixel in the one, bytes 1 and 3 in the other, 16 bits for each.
struct Split {
  Halves even = Halves{};
  Halves odd = Halves{};
};

inline Split split(Words pixels) {
  return {Halves(pixels) & 0xFF, Halves(pixels) >> 8};
}

/// Bytes 0, 1 and 2 of each pixel, 32 bits for each.
struct Spread {
  Words byte0 = Words{};
  Words byte1 = Words{};
  Words byte2 = Words{};
};

inline Spread spread(Words pixels) {
  return {pixels & 0xFF, pixels >> 8 & 0xFF, pixels >> 16 & 0xFF};
}

inline Words gather(const Spread& bytes) {
  return bytes.byte0 | bytes.byte1 << 8 | bytes.byte2 << 16;
}

/// What stands in lane `lane` when each four lanes of `a` and `b` are interleaved in pieces of
/// `piece` lanes, from their first or second half.
constexpr int interleavedFrom(std::size_t lane, std::size_t piece, std::size_t half) {
  const std::size_t four = lane / 4 * 4;
  const std::size_t place = lane % 4;
  const std::size_t from = place / (2 * piece) * piece + place % piece + half * 2;
  const bool isFromB = place / piece % 2 == 1;
  return static_cast<int>(four + from + (isFromB ? lanes : 0));
}

template <std::size_t piece, std::size_t half, std::size_t... lane>
inline Words interleaved(Words a, Words b, std::index_sequence<lane...> /*lanes*/) {
  return __builtin_shufflevector(a, b, interleavedFrom(lane, piece, half)...);
}

template <std::size_t piece, std::size_t half>
inline Words interleaved(Words a, Words b) {
  return interleaved<piece, half>(a, b, std::make_index_sequence<lanes>());
}

/// Four columns of as many rows as a register has lanes; or, turned, four pixels of each row: row i
/// and, in a register of eight, row i + 4 behind it.
struct Tile {
  Words at[4];
};

/// Makes the one of the other: each block of four by four pixels changes rows and columns.
inline Tile turned(const Tile& tile) {
  const Words a = interleaved<1, 0>(tile.at[0], tile.at[1]);
  const Words b = interleaved<1, 0>(tile.at[2], tile.at[3]);
  const Words c = interleaved<1, 1>(tile.at[0], tile.at[1]);
  const Words d = interleaved<1, 1>(tile.at[2], tile.at[3]);
  return {{interleaved<2, 0>(a, b), interleaved<2, 1>(a, b), interleaved<2, 0>(c, d),
           interleaved<2, 1>(c, d)}};
}

/// Where one row of each lane lies.
struct Rows {
  const std::uint8_t* at[lanes];
};

/// Four pixels of one row and, in a register of eight, four of another behind them.
template <std::size_t... lane>
inline Words joined(FourPixels row, FourPixels other, std::index_sequence<lane...> /*lanes*/) {
  return __builtin_shufflevector(row, other, lane...);
}

template <std::size_t first, std::size_t... lane>
inline FourPixels part(Words pixels, std::index_sequence<lane...> /*four*/) {
  return __builtin_shufflevector(pixels, pixels, (first + lane)...);
}

inline Tile loadColumns(const Rows& rows, std::size_t byte) {
  Tile tile;
  for (std::size_t row = 0; row < 4; ++row)
    tile.at[row] = joined(load<FourPixels>(rows.at[row] + byte),
                          load<FourPixels>(rows.at[row + lanes - 4] + byte),
                          std::make_index_sequence<lanes>());
  return turned(tile);
}

/// One row of each lane lies behind the other, a register apart.
inline void storeColumns(std::uint8_t* rows, const Tile& columns) {
  const Tile tile = turned(columns);
  constexpr std::make_index_sequence<4> four;
  for (std::size_t row = 0; row < 4; ++row) {
    store(rows + row * registerBytes, part<0>(tile.at[row], four));
    store(rows + (row + lanes - 4) * registerBytes, part<lanes - 4>(tile.at[row], four));
  }
}

}  // namespace
}  // namespace sentrel::stackblur
