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

void CreateRoot(const fs::path& root) {
  std::error_code error;
  fs::create_directories(root.parent_path(), error);
  // Only a folder that is created here gets the mode; an existing one keeps its own.
  ::mkdir(root.c_str(), 0700);
}

// Logs the refusal, but not again for the folder that was refused last.
void LogRefusal(const fs::path& root, const std::string& reason) {
  static std::mutex mutex;
  static fs::path& refused = *new fs::path;
  const std::lock_guard lock(mutex);
  if (refused == root) return;
  refused = root;
  LogLine("WIN_ROOT: " + root.string() + " is not trusted" + (reason.empty() ? "" : ": " + reason) +
          "; it is not used");
}

// A privileged process starts the programs and drivers below the root folder, and its environment
// may come from an unprivileged user. So the folder must be trusted. A missing folder is created
// only below trusted folders, and is then judged itself.
bool CreateTrustedRoot(const fs::path& root) {
  std::string reason;
  DWORD error = JudgePath(root, reason);
  if (error == ERROR_FILE_NOT_FOUND) {
    CreateRoot(root);
    error = JudgePath(root, reason);
  }
  if (error != NO_ERROR) LogRefusal(root, reason);
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
      CreateRoot(chosen);
      return chosen;
    }
    if (CreateTrustedRoot(chosen)) return chosen;
  }
  CreateRoot(WIN_ROOT_DEFAULT);
  return WIN_ROOT_DEFAULT;
}

bool IsMachineRoot() {
  return RootFolder() == WIN_ROOT_DEFAULT;
}

}  // namespace platform
