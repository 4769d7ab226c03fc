#include "platform/tools/rescomp/message_table.h"

#include <limits>
#include <stdexcept>

namespace rescomp {

namespace {

struct Block {
  std::uint32_t low;
  std::uint32_t high;
  std::size_t offsetInEntries;
};

constexpr std::uint16_t kEntryIsEightBit = 0;

void PutEntry(ByteWriter& entries, std::uint32_t number, const std::string& text) {
  const std::size_t length = (4 + text.size() + 1 + 3) / 4 * 4;
  if (length > std::numeric_limits<std::uint16_t>::max()) {
    throw std::length_error("message " + std::to_string(number) + " is too long");
  }
  entries.Put16(static_cast<std::uint16_t>(length));
  entries.Put16(kEntryIsEightBit);
  entries.PutBytes(text);
  entries.PutBytes(std::string_view("\0", 1));
  entries.AlignTo4();
}

}  // namespace

Bytes EncodeMessageTable(const std::map<std::uint32_t, std::string>& texts) {
  std::vector<Block> blocks;
  ByteWriter entries;
  for (const auto& [number, text] : texts) {
    if (blocks.empty() || number != blocks.back().high + 1) {
      blocks.push_back({number, number, entries.Size()});
    }
    blocks.back().high = number;
    PutEntry(entries, number, text);
  }

  ByteWriter table;
  const std::size_t headerBytes = 4 + 12 * blocks.size();
  table.Put32(static_cast<std::uint32_t>(blocks.size()));
  for (const Block& block : blocks) {
    table.Put32(block.low);
    table.Put32(block.high);
    table.Put32(static_cast<std::uint32_t>(headerBytes + block.offsetInEntries));
  }
  const Bytes body = entries.Take();
  table.PutBytes({reinterpret_cast<const char*>(body.data()), body.size()});
  return table.Take();
}

}  // namespace rescomp
