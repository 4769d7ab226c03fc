#include "platform/service/service_files.h"

#include <sys/stat.h>
#include <unistd.h>
#include <winerror.h>

#include "platform/kernel/encoding.h"
#include "platform/kernel/path.h"

namespace platform {
namespace {

constexpr std::size_t kMaxNameCharacters = 256;
// The address of a socket, "/proc/self/fd/N/NAME.sock" with the descriptor of its folder, must fit
// in 108 bytes.
constexpr std::size_t kMaxNameBytes = 76;

const char* Suffix(ServiceFile file) {
  switch (file) {
    case ServiceFile::kLock:
      return ".lock";
    case ServiceFile::kStatus:
      return ".status";
    case ServiceFile::kSocket:
      return ".sock";
    case ServiceFile::kLog:
      return ".log";
  }
  return "";
}

}  // namespace

bool IsServiceName(std::wstring_view name) {
  return !name.empty() && name.size() <= kMaxNameCharacters &&
         name.find_first_of(L"/\\") == std::wstring_view::npos &&
         Utf8(name).size() <= kMaxNameBytes;
}

std::filesystem::path ServiceFilePath(std::wstring_view name, ServiceFile file) {
  return ServiceFolder() / (Utf8(LowerName(name)) + Suffix(file));
}

std::filesystem::path ServiceFolder() {
  return RootFolder() / "services";
}

std::filesystem::path SystemFolder() {
  return RootFolder() / "System32";
}

DWORD PrepareServiceFolders() {
  ::mkdir(ServiceFolder().c_str(), 0700);
  ::mkdir(SystemFolder().c_str(), 0700);
  ::mkdir((SystemFolder() / "Drivers").c_str(), 0700);
  const bool usable = ::access(ServiceFolder().c_str(), R_OK | W_OK | X_OK) == 0;
  return usable ? NO_ERROR : ERROR_ACCESS_DENIED;
}

}  // namespace platform
