#include "sentrel/effects/StackBlur.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <system_error>
#include <thread>
#include <vector>

#include "sentrel/effects/stackblur/Forms.h"

namespace sentrel {
namespace {

using stackblur::Band;
using stackblur::PreparedBlur;

std::unique_ptr<PreparedBlur> prepare(const Band& band, std::size_t radius) {
  return std::unique_ptr<PreparedBlur>(stackblur::forms().front().prepare(band, radius));
}

/// Each half looks at rows of the other, which that one changes: it gets copies of them.
void blurInTwoBands(const Band& whole, std::size_t radius) {
  const std::size_t pitch = whole.width * 4;
  const std::size_t middle = whole.height / 2;
  std::uint8_t* const lower = whole.rows + middle * pitch;
  const std::size_t above = std::min(radius + 2, middle);
  const std::size_t below = std::min(radius + 2, whole.height - middle);
  const std::vector<std::uint8_t> rowsAbove(lower - above * pitch, lower);
  const std::vector<std::uint8_t> rowsBelow(lower, lower + below * pitch);
  const auto upperBlur = prepare({whole.rows, whole.width, middle, {}, rowsBelow}, radius);
  const auto lowerBlur =
      prepare({lower, whole.width, whole.height - middle, rowsAbove, {}}, radius);
  std::thread second;
  try {
    second = std::thread([&lowerBlur] { lowerBlur->run(); });
  } catch (const std::system_error&) {
    lowerBlur->run();
  }
  upperBlur->run();
  if (second.joinable()) second.join();
}

}  // namespace

void sn__applyStackBlurToBuffer(std::uint8_t* buffer, std::uint32_t width, std::uint32_t height,
                                std::int64_t withRadius, StackBlurThreads threads) {
  if (!buffer || width == 0 || height == 0) return;
  // A radius of 0 would put every pixel in its own place.
  if (withRadius <= 0 || withRadius > largestStackBlurRadius) return;
  const auto radius = static_cast<std::size_t>(withRadius);
  const Band picture{buffer, width, height};
  if (threads == StackBlurThreads::two && height > 1)
    blurInTwoBands(picture, radius);
  else
    prepare(picture, radius)->run();
}

void sn__applyStackBlurToBuffer(std::span<std::uint8_t> buffer, std::uint32_t width,
                                std::uint32_t height, std::int64_t withRadius,
                                StackBlurThreads threads) {
  // Divided, since the product of both sides may be too large to be counted.
  if (width == 0 || buffer.size() / 4 / width < height) return;
  sn__applyStackBlurToBuffer(buffer.data(), width, height, withRadius, threads);
}

}  // namespace sentrel
