#include "tests/support/PlainStackBlur.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace sentrel {
namespace {

using Word = std::uint32_t;

struct Triple {
  Word c0 = 0, c1 = 0, c2 = 0;

  void operator+=(const Triple& b) { c0 += b.c0, c1 += b.c1, c2 += b.c2; }
  void operator-=(const Triple& b) { c0 -= b.c0, c1 -= b.c1, c2 -= b.c2; }
  Triple operator*(Word weight) const { return {c0 * weight, c1 * weight, c2 * weight}; }
};

struct Window {
  explicit Window(Word radius) : r(radius), stack(2 * radius + 1) {}

  void clear() { sum = insum = outsum = {}, sp = r; }

  void fill(int i, const Triple& value) {
    stack[static_cast<std::size_t>(i + static_cast<int>(r))] = value;
    sum += value * (r + 1 - static_cast<Word>(std::abs(i)));
    (i > 0 ? insum : outsum) += value;
  }

  void slide(const Triple& value) {
    const Word div = 2 * r + 1;
    sum -= outsum;
    Triple& oldest = stack[(sp - r + div) % div];
    outsum -= oldest;
    oldest = value;
    insum += value;
    sum += insum;
    sp = (sp + 1) % div;
    outsum += stack[sp];
    insum -= stack[sp];
  }

  Word r, sp = 0;
  Triple sum, insum, outsum;
  std::vector<Triple> stack;
};

template <class Divide>
void blur(std::uint8_t* buffer, std::size_t w, std::size_t h, int r, const Divide& divided) {
  const int wm = static_cast<int>(w) - 1, hm = static_cast<int>(h) - 1, r1 = r + 1;
  std::vector<std::size_t> vmin(std::max(w, h));
  std::vector<Word> plane0(w * h), plane1(w * h), plane2(w * h);
  Window window(static_cast<Word>(r));
  for (std::size_t y = 0; y < h; ++y) {
    const auto pixel = [row = buffer + 4 * y * w](std::size_t x) {
      return Triple{row[4 * x], row[4 * x + 1], row[4 * x + 2]};
    };
    window.clear();
    for (int i = -r; i <= r; ++i)
      window.fill(i, pixel(static_cast<std::size_t>(std::min(wm, std::max(i, 0)))));
    for (std::size_t x = 0; x < w; ++x) {
      const std::size_t at = y * w + x;
      plane0[at] = divided(window.sum.c0);
      plane1[at] = divided(window.sum.c1);
      plane2[at] = divided(window.sum.c2);
      if (y == 0) vmin[x] = static_cast<std::size_t>(std::min(static_cast<int>(x) + r1, wm));
      window.slide(pixel(vmin[x]));
    }
  }
  for (std::size_t x = 0; x < w; ++x) {
    const auto mean = [&](std::size_t at) { return Triple{plane0[at], plane1[at], plane2[at]}; };
    std::ptrdiff_t yp = -static_cast<std::ptrdiff_t>(r) * static_cast<std::ptrdiff_t>(w);
    window.clear();
    for (int i = -r; i <= r; ++i) {
      window.fill(i, mean(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, yp)) + x));
      if (i < hm) yp += static_cast<std::ptrdiff_t>(w);
    }
    for (std::size_t y = 0; y < h; ++y) {
      std::uint8_t* const pixel = buffer + 4 * (y * w + x);
      pixel[0] = static_cast<std::uint8_t>(divided(window.sum.c0));
      pixel[1] = static_cast<std::uint8_t>(divided(window.sum.c1));
      pixel[2] = static_cast<std::uint8_t>(divided(window.sum.c2));
      if (x == 0) vmin[y] = static_cast<std::size_t>(std::min(static_cast<int>(y) + r1, hm)) * w;
      window.slide(mean(x + vmin[y]));
    }
  }
}

}  // namespace

void plainStackBlur(std::uint8_t* buffer, std::uint32_t width, std::uint32_t height, int radius) {
  const Word divsum = static_cast<Word>(radius + 1) * static_cast<Word>(radius + 1);
  if (radius > 126)
    return blur(buffer, width, height, radius, [divsum](Word sum) { return sum / divsum; });
  std::vector<Word> dv(std::size_t{256} * divsum);
  for (std::size_t i = 0; i < dv.size(); ++i)
    dv[i] = static_cast<Word>(i / divsum);
  blur(buffer, width, height, radius, [table = dv.data()](Word sum) { return table[sum]; });
}

}  // namespace sentrel
