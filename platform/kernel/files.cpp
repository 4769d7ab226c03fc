#include <windows.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"

namespace {

// Distinguishes a missing file in an existing folder from a missing folder.
DWORD MissingFileError(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  return std::filesystem::is_directory(folder, error) ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND;
}

DWORD AttributesOf(const struct stat& status) {
  DWORD attributes = 0;
  if (S_ISDIR(status.st_mode)) attributes |= FILE_ATTRIBUTE_DIRECTORY;
  if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
  return attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
}

}  // namespace

extern "C" {

DWORD WINAPI GetCurrentDirectoryW(DWORD characters, LPWSTR folder) try {
  std::error_code error;
  const std::filesystem::path path = std::filesystem::current_path(error);
  if (error) {
    ::SetLastError(platform::ErrorFromErrno(error.value()));
    return 0;
  }
  const std::wstring text = platform::WindowsPath(path);
  const auto length = static_cast<DWORD>(text.size());
  if (folder == nullptr || characters <= length) return length + 1;
  std::ranges::copy(text, folder);
  folder[length] = L'\0';
  return length;
} catch (...) {
  return platform::FailedCall(DWORD{0});
}

DWORD WINAPI GetFileAttributesW(LPCWSTR fileName) try {
  const std::filesystem::path path = platform::PosixPath(fileName == nullptr ? L"" : fileName);
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0) return AttributesOf(status);
  const int error = errno;
  ::SetLastError(error == ENOENT ? MissingFileError(path) : platform::ErrorFromErrno(error));
  return INVALID_FILE_ATTRIBUTES;
} catch (...) {
  return platform::FailedCall(INVALID_FILE_ATTRIBUTES);
}

}  // extern "C"
