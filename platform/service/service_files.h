// The files that a service has under the root folder, in "services": its lock, its published
// status, its control socket and its log. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <string_view>

namespace platform {

// Whether a service can have that name: 1 to 256 characters, no slash or backslash, and short
// enough to name a socket.
bool IsServiceName(std::wstring_view name);

enum class ServiceFile { kLock, kStatus, kSocket, kLog };
std::filesystem::path ServiceFilePath(std::wstring_view name, ServiceFile file);
std::filesystem::path ServiceFolder();

// The folder that a service starts in, and where images of drivers are looked for first.
std::filesystem::path SystemFolder();

// Makes the folders above where they are missing. ERROR_ACCESS_DENIED when they cannot be used by
// this user; nothing of the services works then.
DWORD PrepareServiceFolders();

}  // namespace platform
