// The registry's side of key_provider.h: which keys are made when they are read, and what they are
// made of. Any thread; a provider is called without a lock held.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/registry/hive_key.h"

namespace platform {

// Whether the path is that of a provided key or lies below one.
bool IsProvidedPath(const KeyPath& path);

// The key at such a path with its values and the names of its subkeys; nothing when it is not
// there.
std::optional<HiveKey> FindProvidedKey(const KeyPath& path);

// The keys right below the path that lead to a provided key. They exist whether they are stored or
// not.
std::vector<std::wstring> NamesTowardProvidedKeys(const KeyPath& path);

// Takes a path apart at its backslashes; empty pieces are left out.
KeyPath SplitKeyPath(std::wstring_view path);

}  // namespace platform
