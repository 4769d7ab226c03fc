// The layer's log, on standard error: what is not supported and what has failed. One line for each
// call; the text has no line break at its end. Any thread.
#pragma once

#include <string_view>

namespace platform {

void LogLine(std::string_view text);

}  // namespace platform
