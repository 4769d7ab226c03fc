// The files of a service, in the folder "services" below the root folder: its lock, its published
// status, its control socket and its log. Any thread.
#pragma once

#include <windef.h>

#include <filesystem>
#include <string_view>

namespace platform {

// Whether a service can have that name: 1 to 256 characters, no slash or backslash, and at most 76
// bytes of UTF-8, so that its socket's name fits in an address.
bool IsServiceName(std::wstring_view name);

enum class ServiceFile { kLock, kStatus, kSocket, kLog };
std::filesystem::path ServiceFilePath(std::wstring_view name, ServiceFile file);
std::filesystem::path ServiceFolder();

// The working directory of services, and the first folder in which drivers' images are searched.
std::filesystem::path SystemFolder();

// Creates the folders above when they are missing. ERROR_ACCESS_DENIED when this user has no access
// to ServiceFolder; services do not work then.
DWORD PrepareServiceFolders();

}  // namespace platform
