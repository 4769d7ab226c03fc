#include "platform/gdi/scaling.h"

#include <algorithm>
#include <array>

namespace platform {
namespace {

struct Span {
  int begin;
  int end;
};

// What of the old side the new pixel covers, one pixel at least.
Span Covered(int at, int newSide, int oldSide) {
  const int begin = at * oldSide / newSide;
  return {begin, std::max(begin + 1, (at + 1) * oldSide / newSide)};
}

constexpr std::array kChannelShifts = {0, 8, 16};
constexpr int kAlphaShift = 24;

std::uint32_t Channel(std::uint32_t pixel, int shift) {
  return pixel >> shift & 0xFF;
}

std::uint32_t Mean(const Image& image, Span rows, Span columns) {
  std::array<std::uint64_t, kChannelShifts.size()> sums{};
  std::uint64_t alpha = 0;
  for (int y = rows.begin; y < rows.end; ++y) {
    for (int x = columns.begin; x < columns.end; ++x) {
      const std::uint32_t pixel = image.pixels[static_cast<std::size_t>(y * image.width + x)];
      const std::uint32_t weight = Channel(pixel, kAlphaShift);
      alpha += weight;
      for (std::size_t i = 0; i < sums.size(); ++i)
        sums[i] += std::uint64_t{weight} * Channel(pixel, kChannelShifts[i]);
    }
  }
  if (alpha == 0) return 0;
  const auto count = static_cast<std::uint64_t>(rows.end - rows.begin) *
                     static_cast<std::uint64_t>(columns.end - columns.begin);
  auto mean = static_cast<std::uint32_t>((alpha + count / 2) / count) << kAlphaShift;
  for (std::size_t i = 0; i < sums.size(); ++i)
    mean |= static_cast<std::uint32_t>((sums[i] + alpha / 2) / alpha) << kChannelShifts[i];
  return mean;
}

}  // namespace

Image Scaled(const Image& image, int width, int height) {
  Image scaled{width, height, {}};
  scaled.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y) {
    const Span rows = Covered(y, height, image.height);
    for (int x = 0; x < width; ++x)
      scaled.pixels.push_back(Mean(image, rows, Covered(x, width, image.width)));
  }
  return scaled;
}

}  // namespace platform
