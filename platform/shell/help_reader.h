// Reads compiled help files. They are decoded by a child process, because the library that does it
// crashes on some damaged files: the damage ends that process, not this one. Any thread.
#pragma once

#include <filesystem>
#include <optional>

#include "platform/shell/help_file.h"

namespace platform {

// Everything in the file, or nothing, with a line in the log, when it is no regular file, not
// trusted (kernel/trusted_path.h), larger than kMostHelpBytes, damaged or not decoded in time.
// Takes some milliseconds, with a slow disk 10 s at most.
std::optional<HelpFile> ReadHelpFile(const std::filesystem::path& path);

}  // namespace platform
