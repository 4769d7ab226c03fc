// The texts of one language and their form as a message-table resource (MESSAGE_RESOURCE_DATA).
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/tools/rescomp/byte_writer.h"

namespace rescomp {

struct MessageTable {
  std::string languageName;  // as the source calls it
  std::uint16_t language = 0;
  std::string fileStem;                        // of the file of the encoded table
  std::map<std::uint32_t, std::string> texts;  // UTF-8; each line ends in CR LF
};

// Blocks of consecutive numbers, then the entries: 8-bit (flags 0), null-terminated and padded to a
// multiple of four bytes. An entry's length includes its header and padding, at most 65535; a
// longer one throws std::length_error.
Bytes EncodeMessageTable(const std::map<std::uint32_t, std::string>& texts);

}  // namespace rescomp
