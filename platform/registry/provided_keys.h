// The registry's side of key_provider.h: looks up provided keys. Any thread; providers are called
// without a lock.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/registry/hive_key.h"

namespace platform {

// Whether the path is that of a provided key or of a key below one.
bool IsProvidedPath(const KeyPath& path);

// The key at such a path with its values and subkeys; nothing when it does not exist.
std::optional<HiveKey> FindProvidedKey(const KeyPath& path);

// The direct subkeys of the path that lead to a provided key. They exist even when they are not
// stored.
std::vector<std::wstring> NamesTowardProvidedKeys(const KeyPath& path);

// Splits a path at its backslashes; empty names are dropped.
KeyPath SplitKeyPath(std::wstring_view path);

}  // namespace platform
