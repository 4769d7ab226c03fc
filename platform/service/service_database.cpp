#include "platform/service/service_database.h"

#include <windows.h>

#include <fcntl.h>
#include <sys/file.h>

#include <winsvc.h>

#include <cerrno>
#include <cstring>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"
#include "platform/service/service_files.h"
#include "platform/service/service_state.h"

namespace platform {
namespace {

constexpr const wchar_t* kServicesKey = L"SYSTEM\\CurrentControlSet\\Services";
constexpr const wchar_t* kTypeValue = L"Type";
constexpr const wchar_t* kStartValue = L"Start";
constexpr const wchar_t* kErrorControlValue = L"ErrorControl";
constexpr const wchar_t* kImagePathValue = L"ImagePath";
constexpr const wchar_t* kDisplayNameValue = L"DisplayName";
constexpr const wchar_t* kDeleteFlagValue = L"DeleteFlag";
constexpr DWORD kMaxTextBytes = 64 * 1024;

class Key {
 public:
  Key() = default;
  ~Key() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  DWORD Open(const std::wstring& path, REGSAM access) {
    return static_cast<DWORD>(::RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, access, &key_));
  }
  DWORD Create(const std::wstring& path) {
    return static_cast<DWORD>(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr,
                                                REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE,
                                                nullptr, &key_, nullptr));
  }
  HKEY Get() const { return key_; }

  bool ReadNumber(const wchar_t* name, DWORD& number) const {
    DWORD type = REG_NONE;
    DWORD bytes = sizeof number;
    return ::RegQueryValueExW(key_, name, nullptr, &type, reinterpret_cast<LPBYTE>(&number),
                              &bytes) == ERROR_SUCCESS &&
           type == REG_DWORD && bytes == sizeof number;
  }

  bool ReadText(const wchar_t* name, std::wstring& text) const {
    DWORD type = REG_NONE;
    DWORD bytes = 0;
    if (::RegQueryValueExW(key_, name, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ) || bytes > kMaxTextBytes) {
      return false;
    }
    std::wstring read(bytes / sizeof(wchar_t), L'\0');
    bytes = static_cast<DWORD>(read.size() * sizeof(wchar_t));
    if (::RegQueryValueExW(key_, name, nullptr, &type, reinterpret_cast<LPBYTE>(read.data()),
                           &bytes) != ERROR_SUCCESS) {
      return false;
    }
    // The terminating null need not be stored; the text ends at the first null.
    text = read.substr(0, read.find(L'\0'));
    return true;
  }

  DWORD WriteNumber(const wchar_t* name, DWORD number) const {
    return static_cast<DWORD>(::RegSetValueExW(
        key_, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number));
  }

  DWORD WriteText(const wchar_t* name, DWORD type, const std::wstring& text) const {
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return static_cast<DWORD>(
        ::RegSetValueExW(key_, name, 0, type, reinterpret_cast<const BYTE*>(text.c_str()), bytes));
  }

 private:
  HKEY key_ = nullptr;
};

std::wstring KeyPath(std::wstring_view name) {
  return std::wstring(kServicesKey) + L'\\' + std::wstring(name);
}

bool ReadValues(const Key& key, ServiceRecord& record) {
  DWORD deleteFlag = 0;
  record.markedForDeletion = key.ReadNumber(kDeleteFlagValue, deleteFlag) && deleteFlag != 0;
  if (!key.ReadText(kDisplayNameValue, record.displayName)) record.displayName = record.name;
  return key.ReadNumber(kTypeValue, record.type) && key.ReadNumber(kStartValue, record.startType) &&
         key.ReadNumber(kErrorControlValue, record.errorControl) &&
         key.ReadText(kImagePathValue, record.imagePath);
}

DWORD ReadRecord(std::wstring_view name, ServiceRecord& record) {
  Key key;
  const DWORD error = key.Open(KeyPath(name), KEY_READ);
  if (error == ERROR_FILE_NOT_FOUND) return ERROR_SERVICE_DOES_NOT_EXIST;
  if (error != NO_ERROR) return error;
  record.name = name;
  if (ReadValues(key, record)) return NO_ERROR;
  LogLine("the record of service " + Utf8(name) + " is not complete; it counts as missing");
  return ERROR_SERVICE_DOES_NOT_EXIST;
}

bool IsStopped(const ServiceRecord& record) {
  return ReadState(record.name, record.type).status.dwCurrentState == SERVICE_STOPPED;
}

std::vector<std::wstring> KeyNames() {
  std::vector<std::wstring> names;
  Key services;
  if (services.Open(kServicesKey, KEY_READ) != NO_ERROR) return names;
  for (DWORD index = 0;; ++index) {
    wchar_t name[256] = {};
    DWORD characters = 256;
    const LSTATUS result = ::RegEnumKeyExW(services.Get(), index, name, &characters, nullptr,
                                           nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) return names;
    names.emplace_back(name, characters);
  }
}

}  // namespace

ServiceDatabase::ServiceDatabase() {
  error_ = PrepareServiceFolders();
  if (error_ != NO_ERROR) return;
  // Not in the folder of the services, where a service of any name has files.
  const std::string path = (RootFolder() / "services.lock").native();
  lock_.Reset(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
  int locked = -1;
  do {
    locked = lock_.IsOpen() ? ::flock(lock_.Get(), LOCK_EX) : -1;
  } while (locked != 0 && errno == EINTR);
  if (locked != 0) error_ = ErrorFromErrno(errno);
}

DWORD ServiceDatabase::Read(std::wstring_view name, ServiceRecord& record) {
  if (error_ != NO_ERROR) return error_;
  const DWORD error = ReadRecord(name, record);
  if (error != NO_ERROR || !record.markedForDeletion || !IsStopped(record)) return error;
  Erase(name);
  return ERROR_SERVICE_DOES_NOT_EXIST;
}

DWORD ServiceDatabase::Write(const ServiceRecord& record) {
  if (error_ != NO_ERROR) return error_;
  Key key;
  DWORD error = key.Create(KeyPath(record.name));
  const auto then = [&error](auto write) {
    if (error == NO_ERROR) error = write();
  };
  then([&] { return key.WriteNumber(kStartValue, record.startType); });
  then([&] { return key.WriteNumber(kErrorControlValue, record.errorControl); });
  then([&] { return key.WriteText(kImagePathValue, REG_EXPAND_SZ, record.imagePath); });
  then([&] { return key.WriteText(kDisplayNameValue, REG_SZ, record.displayName); });
  if (record.markedForDeletion) then([&] { return key.WriteNumber(kDeleteFlagValue, 1); });
  // Last: without the type the record is incomplete.
  then([&] { return key.WriteNumber(kTypeValue, record.type); });
  return error;
}

DWORD ServiceDatabase::Create(const ServiceRecord& record) {
  if (error_ != NO_ERROR) return error_;
  const DWORD error = Erase(record.name);
  return error == NO_ERROR || error == ERROR_FILE_NOT_FOUND ? Write(record) : error;
}

DWORD ServiceDatabase::Delete(std::wstring_view name) {
  ServiceRecord record;
  const DWORD error = Read(name, record);
  if (error != NO_ERROR) return error;
  if (record.markedForDeletion) return ERROR_SERVICE_MARKED_FOR_DELETE;
  if (IsStopped(record)) return Erase(name);
  record.markedForDeletion = true;
  return Write(record);
}

DWORD ServiceDatabase::Erase(std::wstring_view name) {
  ForgetState(name);
  return static_cast<DWORD>(::RegDeleteKeyW(HKEY_LOCAL_MACHINE, KeyPath(name).c_str()));
}

std::vector<ServiceRecord> ServiceDatabase::All() {
  std::vector<ServiceRecord> records;
  if (error_ != NO_ERROR) return records;
  for (const std::wstring& name : KeyNames()) {
    ServiceRecord record;
    if (Read(name, record) == NO_ERROR) records.push_back(std::move(record));
  }
  return records;
}

}  // namespace platform
