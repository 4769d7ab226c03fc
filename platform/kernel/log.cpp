#include "platform/kernel/log.h"

#include <unistd.h>

#include <string>

namespace platform {

void LogLine(std::string_view text) {
  // One write, so that lines of several threads do not mix.
  const std::string line = std::string(text) + '\n';
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, line.data(), line.size());
}

}  // namespace platform
