#include "platform/kernel/path.h"

#include <sys/stat.h>
#include <winerror.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/trusted_path.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

void MakeRoot(const fs::path& root) {
  std::error_code error;
  fs::create_directories(root.parent_path(), error);
  // Only a folder that is made here gets the mode; one that exists keeps its owner's choice.
  ::mkdir(root.c_str(), 0700);
}

// Once for each folder that is refused.
void Refuse(const fs::path& root, const std::string& reason) {
  static std::mutex mutex;
  static fs::path& refused = *new fs::path;
  const std::lock_guard lock(mutex);
  if (refused == root) return;
  refused = root;
  LogLine("WIN_ROOT: " + root.string() + " is not trusted" + (reason.empty() ? "" : ": " + reason) +
          "; it is not used");
}

// The services' programs and drivers are named below the root folder, and the environment may be
// that of a user who is to gain nothing by it. A folder that is missing is made where nobody else
// could make it too, and judged as it then is.
bool MakeTrustedRoot(const fs::path& root) {
  std::string reason;
  DWORD error = JudgePath(root, reason);
  if (error == ERROR_FILE_NOT_FOUND) {
    MakeRoot(root);
    error = JudgePath(root, reason);
  }
  if (error != NO_ERROR) Refuse(root, reason);
  return error == NO_ERROR;
}

}  // namespace

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
  if (chosen != nullptr && *chosen != '\0') {
    if (!IsPrivileged()) {
      MakeRoot(chosen);
      return chosen;
    }
    if (MakeTrustedRoot(chosen)) return chosen;
  }
  MakeRoot(WIN_ROOT_DEFAULT);
  return WIN_ROOT_DEFAULT;
}

}  // namespace platform
