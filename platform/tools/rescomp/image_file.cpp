#include "platform/tools/rescomp/image_file.h"

#include <span>
#include <stdexcept>

namespace rescomp {

namespace {

constexpr std::uint16_t kIconType = 1;
constexpr std::size_t kDirectoryHeaderSize = 6;
constexpr std::size_t kDirectoryEntrySize = 16;
constexpr std::size_t kDescriptionSize = 8;
constexpr std::size_t kBitmapFileHeaderSize = 14;

std::uint32_t NumberAt(std::span<const std::uint8_t> bytes, std::size_t offset, std::size_t size) {
  if (offset + size > bytes.size()) throw std::runtime_error("the file is cut short");
  std::uint32_t value = 0;
  for (std::size_t i = size; i-- > 0;)
    value = (value << 8) | bytes[offset + i];
  return value;
}

// An entry of the file's directory: the description, the length of the data and where it lies.
IconImage ReadImage(const Bytes& file, std::size_t entry) {
  const std::size_t length = NumberAt(file, entry + kDescriptionSize, 4);
  const std::size_t begin = NumberAt(file, entry + kDescriptionSize + 4, 4);
  if (length == 0 || begin > file.size() || length > file.size() - begin) {
    throw std::runtime_error("an image of the icon lies outside of its file");
  }
  const auto part = [&](std::size_t offset, std::size_t size) {
    const auto first = file.begin() + static_cast<std::ptrdiff_t>(offset);
    return Bytes(first, first + static_cast<std::ptrdiff_t>(size));
  };
  return {part(entry, kDescriptionSize), part(begin, length)};
}

}  // namespace

std::vector<IconImage> ReadIconFile(const Bytes& file) {
  const std::uint32_t count = NumberAt(file, 4, 2);
  if (NumberAt(file, 0, 2) != 0 || NumberAt(file, 2, 2) != kIconType || count == 0) {
    throw std::runtime_error("the file is no icon");
  }
  std::vector<IconImage> images;
  for (std::size_t i = 0; i < count; ++i)
    images.push_back(ReadImage(file, kDirectoryHeaderSize + i * kDirectoryEntrySize));
  return images;
}

Bytes EncodeIconGroup(const std::vector<IconImage>& images, std::uint16_t firstNumber) {
  ByteWriter out;
  out.Put16(0);
  out.Put16(kIconType);
  out.Put16(static_cast<std::uint16_t>(images.size()));
  std::uint16_t number = firstNumber;
  for (const IconImage& image : images) {
    out.PutBytes(image.description);
    out.Put32(static_cast<std::uint32_t>(image.data.size()));
    out.Put16(number++);
  }
  return out.Take();
}

Bytes BitmapWithoutFileHeader(const Bytes& file) {
  if (file.size() <= kBitmapFileHeaderSize || file[0] != 'B' || file[1] != 'M') {
    throw std::runtime_error("the file is no bitmap");
  }
  return Bytes(file.begin() + kBitmapFileHeaderSize, file.end());
}

}  // namespace rescomp
