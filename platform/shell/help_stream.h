// How the files of a compiled help file are passed from the program that decodes it (tools/
// winhelp_reader) to the viewer: for each file a header, its path in UTF-8 and its bytes; at the
// end an empty header. What is longer or more than these limits is damaged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/shell/help_file.h"

namespace platform {

struct HelpStreamHeader {
  std::uint32_t pathBytes = 0;
  std::uint32_t fileBytes = 0;
};

inline constexpr std::size_t kMostHelpFiles = 4'096;
inline constexpr std::size_t kLongestHelpPath = 512;
// Of the compressed file, and of the stream.
inline constexpr std::size_t kMostHelpBytes = 32 * 1'024 * 1'024;

// The files of a whole stream; nothing when its end is missing or a header is wrong.
std::optional<HelpFile> ParseHelpStream(std::string_view stream);

}  // namespace platform
