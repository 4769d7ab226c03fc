#include <windows.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/handle_table.h"
#include "platform/kernel/log.h"
#include "platform/registry/provided_keys.h"
#include "platform/registry/registry.h"

namespace platform {
namespace {

constexpr REGSAM kQueryValue = KEY_QUERY_VALUE;
constexpr REGSAM kSetValue = 0x0002;
constexpr REGSAM kCreateSubKey = 0x0004;
constexpr REGSAM kEnumerateSubKeys = 0x0008;

// An open key: its path and access, not its values, which may change at any time.
class OpenKey final : public Object {
 public:
  OpenKey(KeyPath path, REGSAM access) : path_(std::move(path)), access_(access) {}

  const KeyPath& Path() const { return path_; }
  bool Allows(REGSAM rights) const { return (access_ & rights) == rights; }

 private:
  KeyPath path_;
  REGSAM access_;
};

// Null when the handle is stale or not that of a key.
std::shared_ptr<OpenKey> FindKey(HKEY key) {
  if (key == HKEY_LOCAL_MACHINE) return std::make_shared<OpenKey>(KeyPath(), KEY_ALL_ACCESS);
  return Resolve<OpenKey>(HandleKind::kRegistryKey, key);
}

// The key of a call that needs these rights. Null with `error` set when the handle is invalid or
// was opened without them.
std::shared_ptr<OpenKey> FindKey(HKEY key, REGSAM rights, DWORD& error) {
  std::shared_ptr<OpenKey> found = FindKey(key);
  error = found == nullptr ? ERROR_INVALID_HANDLE : NO_ERROR;
  if (found == nullptr || found->Allows(rights)) return found;
  error = ERROR_ACCESS_DENIED;
  return nullptr;
}

DWORD SubPath(const OpenKey& key, LPCWSTR subKey, KeyPath& path) {
  path = key.Path();
  const std::wstring_view text = subKey == nullptr ? L"" : subKey;
  if (text.starts_with(L'\\')) return ERROR_BAD_PATHNAME;
  for (std::wstring& name : SplitKeyPath(text)) {
    if (!IsKeyName(name)) return ERROR_INVALID_PARAMETER;
    path.push_back(std::move(name));
  }
  return path.size() > kMaximumKeyDepth ? ERROR_INVALID_PARAMETER : NO_ERROR;
}

// The error for a missing subkey: ERROR_FILE_NOT_FOUND when the open key exists, else
// ERROR_KEY_DELETED.
DWORD MissingKeyError(const OpenKey& above) {
  const DWORD error = LocalMachine().Exists(above.Path());
  return error == NO_ERROR ? ERROR_FILE_NOT_FOUND : error;
}

// Missing write access fails the opening of a key, not the first write.
DWORD CheckWriteAccess(REGSAM access) {
  const bool writes = (access & (kSetValue | kCreateSubKey)) != 0;
  return writes && !LocalMachine().IsWritable() ? ERROR_ACCESS_DENIED : NO_ERROR;
}

HKEY InsertKey(KeyPath path, REGSAM access) {
  return static_cast<HKEY>(Handles().Insert(HandleKind::kRegistryKey,
                                            std::make_shared<OpenKey>(std::move(path), access)));
}

DWORD OpenBelow(const OpenKey& key, LPCWSTR subKey, REGSAM access, PHKEY result) {
  KeyPath path;
  DWORD error = SubPath(key, subKey, path);
  if (error == NO_ERROR) error = LocalMachine().Exists(path);
  if (error == ERROR_KEY_DELETED) return MissingKeyError(key);
  if (error == NO_ERROR) error = CheckWriteAccess(access);
  if (error == NO_ERROR) *result = InsertKey(std::move(path), access);
  return error;
}

DWORD CreateBelow(const OpenKey& key, LPCWSTR subKey, REGSAM access, PHKEY result,
                  DWORD& disposition) {
  KeyPath path;
  bool created = false;
  DWORD error = SubPath(key, subKey, path);
  if (error == NO_ERROR) error = LocalMachine().Exists(key.Path());
  if (error == NO_ERROR) error = CheckWriteAccess(access);
  if (error != NO_ERROR) return error;
  error = LocalMachine().Exists(path);
  if (error == ERROR_KEY_DELETED) {
    if (!key.Allows(kCreateSubKey)) return ERROR_ACCESS_DENIED;
    error = LocalMachine().CreateKey(path, created);
  }
  if (error != NO_ERROR) return error;
  disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
  *result = InsertKey(std::move(path), access);
  return NO_ERROR;
}

DWORD StoreData(const HiveValue& value, LPBYTE data, LPDWORD bytes) {
  if (bytes == nullptr) return NO_ERROR;
  const DWORD capacity = *bytes;
  *bytes = static_cast<DWORD>(value.data.size());
  if (data == nullptr) return NO_ERROR;
  if (capacity < *bytes) return ERROR_MORE_DATA;
  std::ranges::copy(value.data, data);
  return NO_ERROR;
}

DWORD StoreName(const std::wstring& text, LPWSTR name, LPDWORD characters) {
  if (*characters <= text.size()) return ERROR_MORE_DATA;
  std::ranges::copy(text, name);
  name[text.size()] = L'\0';
  *characters = static_cast<DWORD>(text.size());
  return NO_ERROR;
}

DWORD Unsupported(std::string_view what) {
  LogLine(what);
  return ERROR_INVALID_PARAMETER;
}

LSTATUS Status(DWORD error) {
  return static_cast<LSTATUS>(error);
}

}  // namespace
}  // namespace platform

extern "C" {

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR subKey, DWORD options, REGSAM access,
                             PHKEY result) try {
  const auto found = platform::FindKey(key);
  if (found == nullptr) return platform::Status(ERROR_INVALID_HANDLE);
  if (result == nullptr) return platform::Status(ERROR_INVALID_PARAMETER);
  if (options != 0) {
    return platform::Status(platform::Unsupported("RegOpenKeyExW: unsupported options"));
  }
  return platform::Status(platform::OpenBelow(*found, subKey, access, result));
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegCreateKeyExW(HKEY key, LPCWSTR subKey, DWORD reserved, LPWSTR className,
                               DWORD options, REGSAM access, const SECURITY_ATTRIBUTES* security,
                               PHKEY result, LPDWORD disposition) try {
  const auto found = platform::FindKey(key);
  if (found == nullptr) return platform::Status(ERROR_INVALID_HANDLE);
  if (subKey == nullptr || result == nullptr || reserved != 0) {
    return platform::Status(ERROR_INVALID_PARAMETER);
  }
  const bool plainClass = className == nullptr || *className == L'\0';
  if (!plainClass || options != REG_OPTION_NON_VOLATILE || security != nullptr) {
    return platform::Status(
        platform::Unsupported("RegCreateKeyExW: unsupported class, options or security"));
  }
  DWORD done = 0;
  const DWORD error = platform::CreateBelow(*found, subKey, access, result, done);
  if (error == NO_ERROR && disposition != nullptr) *disposition = done;
  return platform::Status(error);
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegCloseKey(HKEY key) try {
  if (key == HKEY_LOCAL_MACHINE) return ERROR_SUCCESS;
  const auto closed = platform::Handles().Remove(platform::HandleKind::kRegistryKey, key);
  return platform::Status(closed == nullptr ? ERROR_INVALID_HANDLE : NO_ERROR);
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                LPDWORD bytes) try {
  if (reserved != nullptr || (data != nullptr && bytes == nullptr)) {
    return platform::Status(ERROR_INVALID_PARAMETER);
  }
  DWORD error = NO_ERROR;
  const auto found = platform::FindKey(key, platform::kQueryValue, error);
  if (found == nullptr) return platform::Status(error);
  platform::HiveValue value;
  const std::wstring_view wanted = name == nullptr ? L"" : name;
  error = platform::LocalMachine().QueryValue(found->Path(), wanted, value);
  if (error != NO_ERROR) return platform::Status(error);
  if (type != nullptr) *type = value.type;
  return platform::Status(platform::StoreData(value, data, bytes));
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                              DWORD bytes) try {
  DWORD error = NO_ERROR;
  const auto found = platform::FindKey(key, platform::kSetValue, error);
  if (found == nullptr) return platform::Status(error);
  const std::wstring_view given = name == nullptr ? L"" : name;
  if (reserved != 0 || (data == nullptr && bytes != 0) || !platform::IsValueName(given)) {
    return platform::Status(ERROR_INVALID_PARAMETER);
  }
  platform::HiveValue value{std::wstring(given), type, {}};
  if (bytes != 0) value.data.assign(data, data + bytes);
  return platform::Status(platform::LocalMachine().SetValue(found->Path(), value));
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD characters,
                             LPDWORD reserved, LPWSTR className, LPDWORD classCharacters,
                             PFILETIME lastWriteTime) try {
  if (name == nullptr || characters == nullptr || reserved != nullptr) {
    return platform::Status(ERROR_INVALID_PARAMETER);
  }
  if (className != nullptr || classCharacters != nullptr || lastWriteTime != nullptr) {
    return platform::Status(
        platform::Unsupported("RegEnumKeyExW: classes and times of keys are not kept"));
  }
  DWORD error = NO_ERROR;
  const auto found = platform::FindKey(key, platform::kEnumerateSubKeys, error);
  if (found == nullptr) return platform::Status(error);
  std::vector<std::wstring> names;
  error = platform::LocalMachine().SubkeyNames(found->Path(), names);
  if (error != NO_ERROR) return platform::Status(error);
  if (index >= names.size()) return platform::Status(ERROR_NO_MORE_ITEMS);
  std::ranges::sort(names, {}, platform::LowerName);
  return platform::Status(platform::StoreName(names[index], name, characters));
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegDeleteKeyW(HKEY key, LPCWSTR subKey) try {
  const auto found = platform::FindKey(key);
  if (found == nullptr) return platform::Status(ERROR_INVALID_HANDLE);
  if (subKey == nullptr) return platform::Status(ERROR_INVALID_PARAMETER);
  platform::KeyPath path;
  DWORD error = platform::SubPath(*found, subKey, path);
  if (error == NO_ERROR) error = platform::LocalMachine().DeleteKey(path);
  if (error == ERROR_KEY_DELETED) error = platform::MissingKeyError(*found);
  return platform::Status(error);
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

LSTATUS WINAPI RegDeleteValueW(HKEY key, LPCWSTR name) try {
  DWORD error = NO_ERROR;
  const auto found = platform::FindKey(key, platform::kSetValue, error);
  if (found == nullptr) return platform::Status(error);
  const std::wstring_view wanted = name == nullptr ? L"" : name;
  return platform::Status(platform::LocalMachine().DeleteValue(found->Path(), wanted));
} catch (...) {
  return static_cast<LSTATUS>(platform::ErrorOfException());
}

}  // extern "C"
