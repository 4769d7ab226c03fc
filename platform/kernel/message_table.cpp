#include "platform/kernel/message_table.h"

#include <cstdint>

#include "platform/kernel/byte_view.h"
#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr std::size_t kBlockBytes = 12;
constexpr std::size_t kEntryHeaderBytes = 4;
constexpr std::uint16_t kUnicodeEntry = 1;

// Zero past the end of the table.
template <class Number>
Number ReadNumber(ByteView table, std::size_t offset) {
  return ReadAt<Number>(table, offset).value_or(0);
}

std::wstring DecodeUtf16(ByteView text) {
  std::wstring wide;
  for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
    const std::uint32_t unit = ReadNumber<std::uint16_t>(text, at);
    const std::uint32_t next = ReadNumber<std::uint16_t>(text, at + 2);
    if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      wide += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
      at += 2;
    } else {
      wide += static_cast<wchar_t>(unit);
    }
  }
  return wide;
}

std::wstring EntryText(ByteView text, std::uint16_t flags) {
  std::wstring wide =
      flags == kUnicodeEntry
          ? DecodeUtf16(text)
          : Wide(std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
  wide.resize(wide.find_last_not_of(L'\0') + 1);
  return wide;
}

std::optional<std::wstring> EntryAt(ByteView table, std::size_t offset) {
  const auto length = ReadNumber<std::uint16_t>(table, offset);
  const auto flags = ReadNumber<std::uint16_t>(table, offset + 2);
  if (length < kEntryHeaderBytes || offset > table.size() || table.size() - offset < length) {
    return std::nullopt;
  }
  return EntryText(table.subspan(offset + kEntryHeaderBytes, length - kEntryHeaderBytes), flags);
}

// The offset after `count` entries; they have no index, only lengths. Nothing when one is damaged.
std::optional<std::size_t> SkipEntries(ByteView table, std::size_t offset, DWORD count) {
  for (DWORD i = 0; i < count; ++i) {
    const auto length = ReadNumber<std::uint16_t>(table, offset);
    if (length < kEntryHeaderBytes) return std::nullopt;
    offset += length;
  }
  return offset;
}

}  // namespace

std::optional<std::wstring> FindMessage(ByteView table, DWORD messageId) {
  const auto blocks = ReadNumber<std::uint32_t>(table, 0);
  for (std::size_t i = 0; i < blocks; ++i) {
    const std::size_t block = sizeof(std::uint32_t) + i * kBlockBytes;
    if (block + kBlockBytes > table.size()) return std::nullopt;
    const auto low = ReadNumber<std::uint32_t>(table, block);
    const auto high = ReadNumber<std::uint32_t>(table, block + 4);
    if (messageId < low || messageId > high) continue;
    const auto first = ReadNumber<std::uint32_t>(table, block + 8);
    const std::optional<std::size_t> offset = SkipEntries(table, first, messageId - low);
    return offset ? EntryAt(table, *offset) : std::nullopt;
  }
  return std::nullopt;
}

}  // namespace platform
