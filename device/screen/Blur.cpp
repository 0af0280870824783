#include "device/screen/Blur.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace sentrel::screen {
namespace {

constexpr std::size_t channels = 4;

/// Half of the symmetric kernel, the middle first, with the whole adding up to 1.
std::vector<float> halfKernel(double sigma) {
  const int reach = static_cast<int>(std::ceil(sigma * 3));
  std::vector<float> half;
  double sum = 0;
  for (int i = 0; i <= reach; ++i) {
    const double weight = std::exp(-i * i / (2 * sigma * sigma));
    half.push_back(static_cast<float>(weight));
    sum += i == 0 ? weight : 2 * weight;
  }
  for (float& weight : half)
    weight = static_cast<float>(weight / sum);
  return half;
}

/// A line of pixels, with its outermost ones repeated by the kernel's reach on either side.
class PaddedLine {
 public:
  PaddedLine(std::size_t length, std::size_t reach)
      : length_(length), reach_(reach), values_((length + 2 * reach) * channels) {}

  void load(const unsigned char* first, std::size_t step) {
    for (std::size_t i = 0; i < length_ + 2 * reach_; ++i) {
      const std::size_t pixel = i < reach_ ? 0 : std::min(i - reach_, length_ - 1);
      for (std::size_t c = 0; c < channels; ++c)
        values_[i * channels + c] = first[pixel * step + c];
    }
  }

  void store(unsigned char* first, std::size_t step, const std::vector<float>& half) const {
    for (std::size_t i = 0; i < length_; ++i)
      for (std::size_t c = 0; c < channels; ++c)
        first[i * step + c] = static_cast<unsigned char>(std::lround(weighted(i, c, half)));
  }

 private:
  float weighted(std::size_t pixel, std::size_t channel, const std::vector<float>& half) const {
    const float* middle = &values_[(pixel + reach_) * channels + channel];
    float sum = half[0] * *middle;
    for (std::size_t k = 1; k <= reach_; ++k)
      sum += half[k] * (middle[-static_cast<std::ptrdiff_t>(k * channels)] + middle[k * channels]);
    return std::clamp(sum, 0.0F, 255.0F);
  }

  std::size_t length_;
  std::size_t reach_;
  std::vector<float> values_;
};

struct Pixels {
  explicit Pixels(cairo_surface_t* picture)
      : data(cairo_image_surface_get_data(picture)),
        width(static_cast<std::size_t>(cairo_image_surface_get_width(picture))),
        height(static_cast<std::size_t>(cairo_image_surface_get_height(picture))),
        stride(static_cast<std::size_t>(cairo_image_surface_get_stride(picture))) {}

  unsigned char* data;
  std::size_t width;
  std::size_t height;
  std::size_t stride;
};

/// Blurs `count` lines of `length` pixels; `step` leads to the next pixel of a line, `next` to the
/// next line.
void blurLines(unsigned char* data, std::size_t count, std::size_t next, std::size_t length,
               std::size_t step, const std::vector<float>& half) {
  PaddedLine line(length, half.size() - 1);
  for (std::size_t i = 0; i < count; ++i) {
    line.load(data + i * next, step);
    line.store(data + i * next, step, half);
  }
}

double greyOf(const unsigned char* pixel) {
  return 0.114 * pixel[0] + 0.587 * pixel[1] + 0.299 * pixel[2];
}

/// Moves a colour to what lies, from `origin`, `amount` times as far away.
void moveFrom(double origin, double amount, unsigned char* pixel) {
  for (int c = 0; c < 3; ++c) {
    const double moved = origin + (pixel[c] - origin) * amount;
    // A premultiplied colour never exceeds its alpha.
    pixel[c] =
        static_cast<unsigned char>(std::clamp(moved + 0.5, 0.0, static_cast<double>(pixel[3])));
  }
}

template <class Change>
void changePixels(cairo_surface_t* picture, Change change) {
  cairo_surface_flush(picture);
  const Pixels pixels(picture);
  for (std::size_t y = 0; y < pixels.height; ++y)
    for (std::size_t x = 0; x < pixels.width; ++x)
      change(pixels.data + y * pixels.stride + x * channels);
  cairo_surface_mark_dirty(picture);
}

}  // namespace

void blurGaussian(cairo_surface_t* picture, double sigma) {
  cairo_surface_flush(picture);
  const Pixels pixels(picture);
  if (!(sigma > 0) || !pixels.data || pixels.width == 0 || pixels.height == 0) return;
  const std::vector<float> half = halfKernel(sigma);
  blurLines(pixels.data, pixels.height, pixels.stride, pixels.width, channels, half);
  blurLines(pixels.data, pixels.width, channels, pixels.height, pixels.stride, half);
  cairo_surface_mark_dirty(picture);
}

void saturate(cairo_surface_t* picture, double amount) {
  changePixels(picture, [amount](unsigned char* pixel) { moveFrom(greyOf(pixel), amount, pixel); });
}

void lightenShadows(cairo_surface_t* picture) {
  changePixels(picture, [](unsigned char* pixel) {
    const double white = pixel[3];  // a colour is premultiplied
    if (white > 0) moveFrom(white, (1 + greyOf(pixel) / white) / 2, pixel);
  });
}

}  // namespace sentrel::screen
