#include "platform/shell/help_stream.h"

#include <cstring>
#include <string>

#include "platform/kernel/encoding.h"

namespace platform {

std::optional<HelpFile> ParseHelpStream(std::string_view stream) {
  HelpFile file;
  for (std::size_t count = 0; count <= kMostHelpFiles; ++count) {
    HelpStreamHeader header;
    if (stream.size() < sizeof header) return std::nullopt;
    std::memcpy(&header, stream.data(), sizeof header);
    stream.remove_prefix(sizeof header);
    if (header.pathBytes == 0 && header.fileBytes == 0) return file;
    const bool fits = header.pathBytes <= kLongestHelpPath &&
                      std::uint64_t{header.pathBytes} + header.fileBytes <= stream.size();
    if (!fits) return std::nullopt;
    file.Add(Wide(stream.substr(0, header.pathBytes)),
             std::string(stream.substr(header.pathBytes, header.fileBytes)));
    stream.remove_prefix(header.pathBytes + header.fileBytes);
  }
  return std::nullopt;
}

}  // namespace platform
