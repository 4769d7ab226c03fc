// Whether a path is trusted: only trusted users can write to it or replace it. Trusted are root
// and, for an unprivileged process, its own user. The files that this process loads and starts get
// its rights, so they must be trusted. A trusted path can be used after the check: only a trusted
// user can have changed it meanwhile. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

// Whether the process may have more rights than the user that started it: it runs as root, or its
// file is set-user-ID or has capabilities (AT_SECURE).
bool IsPrivileged();

// Judges the file or folder, every folder above it, and every link on the way with the folders
// above the link. 0: trusted. ERROR_ACCESS_DENIED: not trusted, and `reason` names the path and its
// owner or group; an empty `reason` means that the path cannot be examined. ERROR_FILE_NOT_FOUND:
// the path does not exist, and what exists of it is trusted. Other errors: the path cannot be
// examined. A folder above may have the sticky bit, as /tmp has: other users cannot replace its
// entries.
DWORD JudgePath(const std::filesystem::path& path, std::string& reason);

// The same, with a line in the log when the path is not trusted. The line begins with `what`, the
// operation that needs the file.
DWORD RequireTrusted(const std::filesystem::path& path, std::string_view what);

}  // namespace platform
