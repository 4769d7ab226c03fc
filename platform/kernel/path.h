// Linux paths as the API shows them: separators are backslashes, and there is no drive letter. Any
// thread.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace platform {

std::filesystem::path PosixPath(std::wstring_view windowsPath);
std::wstring WindowsPath(const std::filesystem::path& path);

// The root folder, which holds the layer's state: the environment variable WIN_ROOT, else the
// folder fixed at build time. Created with mode 0700 when it is missing. A privileged process uses
// the variable only when the folder is trusted (trusted_path.h). The variable is read at every
// call, so that each test can have its own root folder.
std::filesystem::path RootFolder();

// Whether the root folder is the one fixed at build time, which is that of the machine's own
// services.
bool IsMachineRoot();

}  // namespace platform
