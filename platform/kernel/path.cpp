#include "platform/kernel/path.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "platform/kernel/encoding.h"

namespace platform {

std::filesystem::path PosixPath(std::wstring_view windowsPath) {
  std::string path = Utf8(windowsPath);
  std::ranges::replace(path, '\\', '/');
  return path;
}

std::wstring WindowsPath(const std::filesystem::path& path) {
  std::wstring wide = Wide(path.native());
  std::ranges::replace(wide, L'/', L'\\');
  return wide;
}

std::filesystem::path RootFolder() {
  const char* chosen = std::getenv("WIN_ROOT");
  std::filesystem::path root = chosen != nullptr && *chosen != '\0' ? chosen : WIN_ROOT_DEFAULT;
  std::error_code error;
  std::filesystem::create_directories(root.parent_path(), error);
  // Only a folder that is made here gets the mode; one that exists keeps its owner's choice.
  ::mkdir(root.c_str(), 0700);
  return root;
}

}  // namespace platform
