#include "platform/gdi/dib.h"

#include <algorithm>
#include <cstdlib>

namespace platform {
namespace {

struct InfoHeader {  // BITMAPINFOHEADER
  std::uint32_t size;
  std::int32_t width;
  std::int32_t height;  // negative: the rows come from the top
  std::uint16_t planes;
  std::uint16_t bitCount;
  std::uint32_t compression;
  std::uint32_t imageSize;
  std::int32_t horizontalResolution;
  std::int32_t verticalResolution;
  std::uint32_t coloursUsed;
  std::uint32_t coloursImportant;
};
static_assert(sizeof(InfoHeader) == 40);

constexpr std::uint32_t kNotCompressed = 0;  // BI_RGB
constexpr std::int32_t kLongestSide = 8192;
constexpr std::uint32_t kAlpha = 0xFF000000;

// Every row fills whole words of four bytes.
std::size_t RowBytes(int width, int bitCount) {
  return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bitCount) + 31) / 32 * 4;
}

std::uint32_t ByteAt(ByteView bytes, std::size_t offset) {
  return std::to_integer<std::uint32_t>(bytes[offset]);
}

// One of several pixels in a byte, the first in the highest bits.
std::uint32_t IndexAt(ByteView row, int x, int bitCount) {
  const auto bit = static_cast<std::size_t>(x) * static_cast<std::size_t>(bitCount);
  const std::size_t shift = 8 - static_cast<std::size_t>(bitCount) - bit % 8;
  return ByteAt(row, bit / 8) >> shift & ((1u << bitCount) - 1);
}

class Dib {
 public:
  // Nothing when it is of no kind that can be read. The rows are half of the height for an icon.
  static std::optional<Dib> Parse(ByteView bytes, bool isIcon);

  Image Colours() const;
  // Whether the mask leaves the pixel out.
  bool IsMasked(int x, int y) const;
  bool HasAlpha() const { return header_.bitCount == 32; }

 private:
  std::size_t PaletteEntries() const;
  std::size_t ColourBytes() const { return RowBytes(width_, header_.bitCount) * Height(); }
  std::size_t MaskBytes() const { return RowBytes(width_, 1) * Height(); }
  std::size_t Height() const { return static_cast<std::size_t>(height_); }
  std::size_t RowFromStart(int y) const;
  std::uint32_t PixelAt(ByteView row, int x) const;

  InfoHeader header_{};
  int width_ = 0;
  int height_ = 0;
  ByteView palette_;
  ByteView colours_;
  ByteView mask_;
};

bool IsReadable(const InfoHeader& header, bool isIcon) {
  constexpr std::uint16_t kBitCounts[] = {1, 4, 8, 24, 32};
  return header.size >= sizeof header && header.compression == kNotCompressed && header.width > 0 &&
         header.width <= kLongestSide && header.height != 0 && header.height >= -kLongestSide &&
         header.height <= 2 * kLongestSide &&
         (!isIcon || (header.height > 0 && header.height % 2 == 0)) &&
         std::ranges::count(kBitCounts, header.bitCount) == 1;
}

std::size_t Dib::PaletteEntries() const {
  if (header_.bitCount > 8) return header_.coloursUsed;
  const std::size_t all = std::size_t{1} << header_.bitCount;
  return header_.coloursUsed == 0 ? all : std::min<std::size_t>(header_.coloursUsed, all);
}

std::optional<Dib> Dib::Parse(ByteView bytes, bool isIcon) {
  const auto header = ReadAt<InfoHeader>(bytes, 0);
  if (!header.has_value() || !IsReadable(*header, isIcon)) return std::nullopt;
  Dib dib;
  dib.header_ = *header;
  dib.width_ = header->width;
  dib.height_ = isIcon ? header->height / 2 : std::abs(header->height);
  const std::size_t palette = dib.PaletteEntries() * sizeof(std::uint32_t);
  const std::size_t needed = palette + dib.ColourBytes() + (isIcon ? dib.MaskBytes() : 0);
  if (bytes.size() < header->size || bytes.size() - header->size < needed) return std::nullopt;
  ByteView rest = bytes.subspan(header->size);
  dib.palette_ = rest.first(palette);
  dib.colours_ = rest.subspan(palette, dib.ColourBytes());
  if (isIcon) dib.mask_ = rest.subspan(palette + dib.ColourBytes(), dib.MaskBytes());
  return dib;
}

std::size_t Dib::RowFromStart(int y) const {
  return static_cast<std::size_t>(header_.height < 0 ? y : height_ - 1 - y);
}

std::uint32_t Dib::PixelAt(ByteView row, int x) const {
  const auto at = static_cast<std::size_t>(x);
  if (header_.bitCount == 32) return ReadAt<std::uint32_t>(row, at * 4).value_or(0);
  if (header_.bitCount == 24) {
    return ByteAt(row, at * 3) | ByteAt(row, at * 3 + 1) << 8 | ByteAt(row, at * 3 + 2) << 16;
  }
  // A number past the palette's end is black.
  return ReadAt<std::uint32_t>(palette_, IndexAt(row, x, header_.bitCount) * 4u).value_or(0);
}

Image Dib::Colours() const {
  Image image{width_, height_, {}};
  image.pixels.reserve(static_cast<std::size_t>(width_) * Height());
  const std::size_t rowBytes = RowBytes(width_, header_.bitCount);
  for (int y = 0; y < height_; ++y) {
    const ByteView row = colours_.subspan(RowFromStart(y) * rowBytes, rowBytes);
    for (int x = 0; x < width_; ++x)
      image.pixels.push_back(PixelAt(row, x));
  }
  return image;
}

bool Dib::IsMasked(int x, int y) const {
  const std::size_t rowBytes = RowBytes(width_, 1);
  return IndexAt(mask_.subspan(RowFromStart(y) * rowBytes, rowBytes), x, 1) != 0;
}

}  // namespace

std::optional<Image> DecodeBitmap(ByteView bytes) {
  const auto dib = Dib::Parse(bytes, false);
  if (!dib.has_value()) return std::nullopt;
  Image image = dib->Colours();
  for (std::uint32_t& pixel : image.pixels)
    pixel |= kAlpha;
  return image;
}

std::optional<Image> DecodeIconBitmap(ByteView bytes) {
  const auto dib = Dib::Parse(bytes, true);
  if (!dib.has_value()) return std::nullopt;
  Image image = dib->Colours();
  const auto hasAlpha = [](std::uint32_t pixel) { return (pixel & kAlpha) != 0; };
  if (dib->HasAlpha() && std::ranges::any_of(image.pixels, hasAlpha)) return image;
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      auto& pixel = image.pixels[static_cast<std::size_t>(y * image.width + x)];
      pixel = dib->IsMasked(x, y) ? 0 : pixel | kAlpha;
    }
  }
  return image;
}

}  // namespace platform
