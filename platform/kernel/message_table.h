// Reads message-table resources: MESSAGE_RESOURCE_DATA as winnt.h documents it, a count of blocks
// (first id, last id, offset of the first entry) and entries (length in bytes with the header,
// flags 0 for 8-bit text, UTF-8 here, or 1 for UTF-16LE). The bytes are not trusted. Any thread.
#pragma once

#include <windef.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace platform {

// The text of a message as it is stored, escapes and all, without the zeros that pad its entry;
// nothing when the table does not hold it or is damaged there.
std::optional<std::wstring> FindMessage(std::span<const std::byte> table, DWORD messageId);

}  // namespace platform
