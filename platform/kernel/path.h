// Paths of Linux as the API shows them: separators are backslashes, there is no drive letter.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

std::filesystem::path PosixPath(std::wstring_view windowsPath);
std::wstring WindowsPath(const std::filesystem::path& path);

// The folder of the layer's state: the environment variable WIN_ROOT, else the folder fixed at
// build time. Made, with mode 0700, when it is missing. A privileged process takes the variable
// only when nobody else can write to that folder or replace it. Read afresh at every call, so that
// each test can have a root of its own.
std::filesystem::path RootFolder();

}  // namespace platform
