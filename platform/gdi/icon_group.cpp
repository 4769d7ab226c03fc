#include "platform/gdi/icon_group.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "platform/gdi/dib.h"
#include "platform/gdi/png.h"
#include "platform/gdi/scaling.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

struct GroupHeader {  // NEWHEADER
  std::uint16_t reserved;
  std::uint16_t type;
  std::uint16_t count;
};
constexpr std::uint16_t kIconType = 1;

#pragma pack(push, 2)
struct GroupEntry {  // RESDIR
  std::uint8_t width;
  std::uint8_t height;
  std::uint8_t colours;
  std::uint8_t reserved;
  std::uint16_t planes;
  std::uint16_t bitCount;
  std::uint32_t bytes;
  std::uint16_t number;
};
#pragma pack(pop)
static_assert(sizeof(GroupEntry) == 14);

std::vector<GroupEntry> EntriesOf(ByteView group) {
  std::vector<GroupEntry> entries;
  const auto header = ReadAt<GroupHeader>(group, 0);
  if (!header.has_value() || header->type != kIconType) return entries;
  for (std::size_t i = 0; i < header->count; ++i) {
    const auto entry = ReadAt<GroupEntry>(group, sizeof *header + i * sizeof(GroupEntry));
    if (entry.has_value()) entries.push_back(*entry);
  }
  return entries;
}

std::optional<Image> Decode(ByteView bytes) {
  return IsPng(bytes) ? DecodePng(bytes) : DecodeIconBitmap(bytes);
}

}  // namespace

std::vector<Image> DecodeIconGroup(ByteView group, const IconEntrySource& entryOf) {
  std::vector<GroupEntry> entries = EntriesOf(group);
  std::ranges::stable_sort(entries, std::greater(), &GroupEntry::bitCount);
  std::map<std::pair<int, int>, Image> bySize;
  for (const GroupEntry& entry : entries) {
    auto image = Decode(entryOf(entry.number));
    if (!image.has_value()) {
      LogLine("icon: picture " + std::to_string(entry.number) + " cannot be read");
      continue;
    }
    const std::pair size(image->width, image->height);
    bySize.try_emplace(size, std::move(*image));
  }
  std::vector<Image> pictures;
  for (auto& [size, image] : bySize)
    pictures.push_back(std::move(image));
  return pictures;
}

IconImages IconOfSize(std::vector<Image> pictures, int width, int height) {
  // They come in the order of their sizes.
  const auto suffices = [&](const Image& image) {
    return image.width >= width && image.height >= height;
  };
  auto best = std::ranges::find_if(pictures, suffices);
  if (best == pictures.end()) --best;
  if (best->width == width && best->height == height) {
    std::rotate(pictures.begin(), best, best + 1);
  } else {
    pictures.insert(pictures.begin(), Scaled(*best, width, height));
  }
  return {width, height, std::move(pictures)};
}

}  // namespace platform
