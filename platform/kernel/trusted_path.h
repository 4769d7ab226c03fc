// Who can change what lies at a path. What this process loads, starts and follows acts with its
// rights, so nobody may be able to change it who has not got these rights anyway: root, and for an
// unprivileged process its own user. Such a path stays what it was when it was judged, until one of
// those changes it. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

// Whether the process acts with more rights than whoever started it may have: as root, or through
// rights that its file gives it.
bool IsPrivileged();

// Judges the file or folder, every folder above it, and every link on the way with the folders
// above it. 0; ERROR_ACCESS_DENIED, with which of them and whose it is in `reason`; or why it
// cannot be looked at: ERROR_FILE_NOT_FOUND when there is nothing, and what is there of it is
// trusted. A folder with the sticky bit, such as /tmp, may be above: its entries are safe from
// strangers.
DWORD JudgePath(const std::filesystem::path& path, std::string& reason);

// The same with a line in the log, begun with `what` wants the file, when it is not trusted.
DWORD RequireTrusted(const std::filesystem::path& path, std::string_view what);

}  // namespace platform
