// The layer's own complaints: what it does not support, what it could not do. One line each, on
// standard error, without a line break at the end of the text. Any thread.
#pragma once

#include <string_view>

namespace platform {

void LogLine(std::string_view text);

}  // namespace platform
