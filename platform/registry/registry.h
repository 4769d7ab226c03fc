// HKEY_LOCAL_MACHINE: the stored keys of the hive and the provided ones, by path. Every operation
// returns 0 or the error that the API documents; ERROR_KEY_DELETED when the key does not exist. Any
// thread, any number of processes.
#pragma once

#include <windef.h>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/registry/hive_file.h"
#include "platform/registry/hive_key.h"

namespace platform {

class Registry {
 public:
  // Reads.
  DWORD Exists(const KeyPath& path);
  DWORD SubkeyNames(const KeyPath& path, std::vector<std::wstring>& names);
  DWORD QueryValue(const KeyPath& path, std::wstring_view name, HiveValue& value);

  // Writes. Provided keys are read-only: ERROR_ACCESS_DENIED.
  DWORD CreateKey(const KeyPath& path, bool& created);
  DWORD SetValue(const KeyPath& path, const HiveValue& value);
  DWORD DeleteValue(const KeyPath& path, std::wstring_view name);
  DWORD DeleteKey(const KeyPath& path);  // ERROR_ACCESS_DENIED when it has subkeys

  // Whether this process has write access to the hive's folder.
  bool IsWritable();

 private:
  // Changes the tree. Sets `changed` when it has to be written; returns 0 or an error.
  using Change = std::function<DWORD(HiveKey& root, bool& changed)>;
  DWORD Apply(const Change& change);
  DWORD Read(const std::function<DWORD(const HiveKey& root)>& reader);
  HiveFile& File();

  std::mutex mutex_;
  std::unique_ptr<HiveFile> file_;  // of the root folder at the last operation
};

Registry& LocalMachine();

}  // namespace platform
