#include "platform/gdi/icon_group.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

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

// 0 stands for 256, which does not fit into a byte.
int SideOf(std::uint8_t side) {
  return side != 0 ? side : 256;
}

}  // namespace

std::vector<Image> ReadIconGroup(ByteView group, const IconEntrySource& entryOf) {
  std::vector<GroupEntry> entries = EntriesOf(group);
  std::ranges::stable_sort(entries, std::greater(), &GroupEntry::bitCount);
  std::map<std::pair<int, int>, Image> bySize;
  for (const GroupEntry& entry : entries) {
    const std::pair size(SideOf(entry.width), SideOf(entry.height));
    const ByteView bytes = entryOf(entry.number);
    if (bytes.empty()) {
      LogLine("icon: picture " + std::to_string(entry.number) + " is missing");
    } else {
      bySize.try_emplace(size, Image{ImageFormat::kIcon, size.first, size.second, bytes});
    }
  }
  std::vector<Image> images;
  for (const auto& [size, image] : bySize)
    images.push_back(image);
  return images;
}

}  // namespace platform
