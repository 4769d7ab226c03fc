#include "platform/registry/registry.h"

#include <winerror.h>

#include <algorithm>

#include "platform/kernel/encoding.h"
#include "platform/kernel/path.h"
#include "platform/registry/provided_keys.h"

namespace platform {
namespace {

// A key above a provided one exists even when it is not stored.
bool KeyExists(const HiveKey& root, const KeyPath& path) {
  return root.FindPath(path) != nullptr || !NamesTowardProvidedKeys(path).empty();
}

std::vector<std::wstring> NamesBelow(const HiveKey& root, const KeyPath& path) {
  std::vector<std::wstring> names;
  if (const HiveKey* key = root.FindPath(path)) {
    for (const HiveKey& each : key->keys)
      names.push_back(each.name);
  }
  for (const std::wstring& toward : NamesTowardProvidedKeys(path)) {
    const bool listed = std::ranges::any_of(
        names, [&toward](const std::wstring& name) { return EqualNames(name, toward); });
    if (!listed) names.push_back(toward);
  }
  return names;
}

DWORD CopyValue(const HiveKey* key, std::wstring_view name, HiveValue& value) {
  const HiveValue* found = key == nullptr ? nullptr : key->FindValue(name);
  if (found == nullptr) return ERROR_FILE_NOT_FOUND;
  value = *found;
  return NO_ERROR;
}

}  // namespace

HiveFile& Registry::File() {
  const std::filesystem::path path = RootFolder() / "registry" / "machine.hive";
  if (file_ == nullptr || file_->Path() != path) file_ = std::make_unique<HiveFile>(path);
  return *file_;
}

DWORD Registry::Read(const std::function<DWORD(const HiveKey& root)>& reader) {
  const std::lock_guard lock(mutex_);
  const HiveKey* root = nullptr;
  const DWORD error = File().Read(root);
  return error != NO_ERROR ? error : reader(*root);
}

DWORD Registry::Apply(const Change& change) {
  const std::lock_guard lock(mutex_);
  HiveFile& file = File();
  FileDescriptor otherWriters;
  const HiveKey* current = nullptr;
  DWORD error = file.LockForWriting(otherWriters);
  if (error == NO_ERROR) error = file.Read(current);
  if (error != NO_ERROR) return error;
  HiveKey root = *current;
  bool changed = false;
  error = change(root, changed);
  return error == NO_ERROR && changed ? file.Write(std::move(root)) : error;
}

DWORD Registry::Exists(const KeyPath& path) {
  if (IsProvidedPath(path)) return FindProvidedKey(path) ? NO_ERROR : ERROR_KEY_DELETED;
  return Read(
      [&](const HiveKey& root) { return KeyExists(root, path) ? NO_ERROR : ERROR_KEY_DELETED; });
}

DWORD Registry::SubkeyNames(const KeyPath& path, std::vector<std::wstring>& names) {
  if (IsProvidedPath(path)) {
    const std::optional<HiveKey> key = FindProvidedKey(path);
    if (!key) return ERROR_KEY_DELETED;
    for (const HiveKey& each : key->keys)
      names.push_back(each.name);
    return NO_ERROR;
  }
  return Read([&](const HiveKey& root) {
    if (!KeyExists(root, path)) return ERROR_KEY_DELETED;
    names = NamesBelow(root, path);
    return NO_ERROR;
  });
}

DWORD Registry::QueryValue(const KeyPath& path, std::wstring_view name, HiveValue& value) {
  if (IsProvidedPath(path)) {
    const std::optional<HiveKey> key = FindProvidedKey(path);
    return key ? CopyValue(&*key, name, value) : ERROR_KEY_DELETED;
  }
  return Read([&](const HiveKey& root) {
    if (!KeyExists(root, path)) return ERROR_KEY_DELETED;
    return CopyValue(root.FindPath(path), name, value);
  });
}

DWORD Registry::CreateKey(const KeyPath& path, bool& created) {
  created = false;
  if (IsProvidedPath(path)) return FindProvidedKey(path) ? NO_ERROR : ERROR_ACCESS_DENIED;
  return Apply([&](HiveKey& root, bool& changed) {
    if (KeyExists(root, path)) return NO_ERROR;
    root.MakePath(path);
    created = changed = true;
    return NO_ERROR;
  });
}

DWORD Registry::SetValue(const KeyPath& path, const HiveValue& value) {
  if (IsProvidedPath(path)) return ERROR_ACCESS_DENIED;
  return Apply([&](HiveKey& root, bool& changed) {
    if (!KeyExists(root, path)) return ERROR_KEY_DELETED;
    HiveKey& key = root.MakePath(path);
    HiveValue* existing = key.FindValue(value.name);
    if (existing == nullptr) {
      key.values.push_back(value);
      changed = true;
    } else if (existing->type != value.type || existing->data != value.data) {
      existing->type = value.type;
      existing->data = value.data;
      changed = true;
    }
    return NO_ERROR;
  });
}

DWORD Registry::DeleteValue(const KeyPath& path, std::wstring_view name) {
  if (IsProvidedPath(path)) return ERROR_ACCESS_DENIED;
  return Apply([&](HiveKey& root, bool& changed) {
    if (!KeyExists(root, path)) return ERROR_KEY_DELETED;
    const auto hasName = [name](const HiveValue& each) { return EqualNames(each.name, name); };
    if (std::erase_if(root.MakePath(path).values, hasName) == 0) return ERROR_FILE_NOT_FOUND;
    changed = true;
    return NO_ERROR;
  });
}

DWORD Registry::DeleteKey(const KeyPath& path) {
  if (IsProvidedPath(path) || path.empty()) return ERROR_ACCESS_DENIED;
  return Apply([&](HiveKey& root, bool& changed) {
    if (!KeyExists(root, path)) return ERROR_KEY_DELETED;
    if (!NamesBelow(root, path).empty()) return ERROR_ACCESS_DENIED;
    HiveKey& above = root.MakePath(KeyPath(path.begin(), path.end() - 1));
    std::erase_if(above.keys,
                  [&path](const HiveKey& each) { return EqualNames(each.name, path.back()); });
    changed = true;
    return NO_ERROR;
  });
}

bool Registry::IsWritable() {
  const std::lock_guard lock(mutex_);
  return File().IsWritable();
}

Registry& LocalMachine() {
  static Registry& registry = *new Registry;
  return registry;
}

}  // namespace platform
