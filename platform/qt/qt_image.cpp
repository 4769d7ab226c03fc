#include "platform/qt/qt_image.h"

#include <QByteArray>
#include <algorithm>
#include <cstdint>
#include <map>

namespace platform {
namespace {

#pragma pack(push, 1)
struct FileHeader {  // BITMAPFILEHEADER
  char type[2] = {'B', 'M'};
  std::uint32_t fileBytes = 0;
  std::uint32_t reserved = 0;
  std::uint32_t pixelOffset = 0;
};

struct InfoHeader {  // BITMAPINFOHEADER
  std::uint32_t size;
  std::int32_t width;
  std::int32_t height;
  std::uint16_t planes;
  std::uint16_t bitCount;
  std::uint32_t compression;
  std::uint32_t imageSize;
  std::int32_t horizontalResolution;
  std::int32_t verticalResolution;
  std::uint32_t coloursUsed;
  std::uint32_t coloursImportant;
};

struct IconFile {  // ICONDIR with its only ICONDIRENTRY
  std::uint16_t reserved = 0;
  std::uint16_t type = 1;
  std::uint16_t count = 1;
  std::uint8_t width = 0;
  std::uint8_t height = 0;
  std::uint8_t colours = 0;
  std::uint8_t reservedToo = 0;
  std::uint16_t planes = 1;
  std::uint16_t bitCount = 32;
  std::uint32_t bytes = 0;
  std::uint32_t offset = 22;
};
#pragma pack(pop)
static_assert(sizeof(FileHeader) == 14 && sizeof(InfoHeader) == 40 && sizeof(IconFile) == 22);

// Builds an image file: resources hold the image without the file's first header.
template <class Header>
QByteArray FileOf(const Header& header, ByteView bytes) {
  QByteArray file(reinterpret_cast<const char*>(&header), sizeof header);
  file.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  return file;
}

QImage DecodeIcon(const Image& image) {
  IconFile header;
  header.width = static_cast<std::uint8_t>(image.width);
  header.height = static_cast<std::uint8_t>(image.height);
  header.bytes = static_cast<std::uint32_t>(image.bytes.size());
  return QImage::fromData(FileOf(header, image.bytes), "ICO");
}

QImage DecodeBitmap(const Image& image) {
  const auto info = ReadAt<InfoHeader>(image.bytes, 0);
  if (!info.has_value()) return {};
  std::uint32_t colours = info->coloursUsed;
  if (colours == 0 && info->bitCount <= 8) colours = 1u << info->bitCount;
  FileHeader header;
  header.fileBytes = static_cast<std::uint32_t>(sizeof header + image.bytes.size());
  header.pixelOffset = static_cast<std::uint32_t>(sizeof header) + info->size + 4 * colours;
  return QImage::fromData(FileOf(header, image.bytes), "BMP");
}

}  // namespace

const QImage& DecodedImage(const Image& image) {
  // Keyed by address, since resources never move.
  static auto& decoded = *new std::map<const std::byte*, QImage>;
  const auto [entry, isNew] = decoded.try_emplace(image.bytes.data());
  if (!isNew) return entry->second;
  entry->second = image.format == ImageFormat::kIcon ? DecodeIcon(image) : DecodeBitmap(image);
  if (entry->second.isNull()) qWarning("image: a picture of the resources cannot be decoded");
  return entry->second;
}

}  // namespace platform
