// Reads message-table resources (MESSAGE_RESOURCE_DATA, winnt.h): a count of blocks, the blocks
// (first id, last id, offset of the first entry) and the entries (length in bytes with the header,
// flags 0 for 8-bit text, UTF-8 here, or 1 for UTF-16LE). The bytes are not trusted. Any thread.
#pragma once

#include <windef.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace platform {

// The stored text of a message, with its escapes and without the padding nulls of its entry.
// Nothing when the table does not hold the message or is damaged at that entry.
std::optional<std::wstring> FindMessage(std::span<const std::byte> table, DWORD messageId);

}  // namespace platform
