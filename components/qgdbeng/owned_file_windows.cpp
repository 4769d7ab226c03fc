#include <windows.h>

#include <aclapi.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <system_error>

#include "owned_file.h"
#include "owner_access_windows.h"
#include "system_handle_windows.h"

namespace quillgate::engine {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct LocalMemory {
  void operator()(void* memory) const { ::LocalFree(memory); }
};

[[noreturn]] void FailWith(DWORD error, const std::string& path) {
  Fail(std::system_category().message(static_cast<int>(error)), path);
}

std::filesystem::path WidePath(const std::string& path) {
  return std::u8string(path.begin(), path.end());
}

// CreateFileW as SQLite calls it, with two differences: a new file is accessible to its owner only,
// whatever the folder's inherited entries are, and a link is not followed.
HANDLE WINAPI CreateOwnersFile(LPCWSTR name, DWORD access, DWORD share,
                               LPSECURITY_ATTRIBUTES /*attributes*/, DWORD disposition, DWORD flags,
                               HANDLE templateFile) noexcept {
  SECURITY_ATTRIBUTES attributes = OwnerAccess::OfProcess().ForNewFile();
  return ::CreateFileW(name, access, share, &attributes, disposition,
                       flags | FILE_FLAG_OPEN_REPARSE_POINT, templateFile);
}

// By default SQLite creates its logs, and the index of the write-ahead log, with the access list
// inherited from their folder.
bool GuardWhatSqliteMakes() {
  OwnerAccess::OfProcess();  // throws here rather than in the callback
  sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  const auto call = reinterpret_cast<sqlite3_syscall_ptr>(&CreateOwnersFile);
  if (system == nullptr || system->xSetSystemCall(system, "CreateFileW", call) != SQLITE_OK) {
    throw OpenError("SQLite's files cannot be kept from others");
  }
  return true;
}

// Opens the file to restrict its access; null when there is none. Folders are opened, too, so that
// they can be recognized.
SystemHandle OpenToNarrow(const std::string& path) {
  constexpr DWORD kAccess = READ_CONTROL | WRITE_DAC | FILE_READ_ATTRIBUTES;
  constexpr DWORD kFlags = FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS;
  const std::filesystem::path wide = WidePath(path);
  const HANDLE file =
      ::CreateFileW(wide.c_str(), kAccess, kShareAll, nullptr, OPEN_EXISTING, kFlags, nullptr);
  if (file != INVALID_HANDLE_VALUE) return SystemHandle(file);
  const DWORD error = ::GetLastError();
  if (error != ERROR_FILE_NOT_FOUND) FailWith(error, path);
  return nullptr;
}

void RefuseWhatIsNoFile(HANDLE file, const std::string& path) {
  if (::GetFileType(file) != FILE_TYPE_DISK) Fail("it is not a file", path);
  BY_HANDLE_FILE_INFORMATION status{};
  if (::GetFileInformationByHandle(file, &status) == FALSE) FailWith(::GetLastError(), path);
  const DWORD attributes = status.dwFileAttributes;
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) Fail("it is a link", path);
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) Fail("it is a folder", path);
}

void RefuseWhatIsOthers(HANDLE file, const std::string& path) {
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR read = nullptr;
  const DWORD error = ::GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                                        nullptr, nullptr, nullptr, &read);
  if (error != ERROR_SUCCESS) FailWith(error, path);
  const std::unique_ptr<void, LocalMemory> descriptor(read);
  if (owner == nullptr || !OwnerAccess::OfProcess().IsOwner(owner)) {
    Fail("it belongs to another user", path);
  }
}

}  // namespace

std::string FullPath(const std::string& path) {
  try {
    const std::u8string full = std::filesystem::absolute(WidePath(path)).u8string();
    return {full.begin(), full.end()};
  } catch (const std::system_error& error) {
    throw OpenError(error.what());
  }
}

void MakeFile(const std::string& path) {
  [[maybe_unused]] static const bool guarded = GuardWhatSqliteMakes();
  const std::filesystem::path wide = WidePath(path);
  const HANDLE file = CreateOwnersFile(wide.c_str(), GENERIC_WRITE, kShareAll, nullptr, CREATE_NEW,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) {
    ::CloseHandle(file);
  } else if (::GetLastError() != ERROR_FILE_EXISTS) {
    FailWith(::GetLastError(), path);
  }
}

// Works on a handle, so that the file checked is the file changed. Closing the handle keeps the
// locks that other connections have on the file.
void KeepFromOthers(const std::string& path) {
  const SystemHandle file = OpenToNarrow(path);
  // SQLite will create a missing file, or one removed meanwhile, like the database file.
  if (file == nullptr) return;
  RefuseWhatIsNoFile(file.get(), path);
  RefuseWhatIsOthers(file.get(), path);
  const DWORD error = OwnerAccess::OfProcess().ApplyTo(file.get());
  if (error != ERROR_SUCCESS) FailWith(error, path);
}

}  // namespace quillgate::engine
