// Keys that are not stored but made when they are read: the network cards. Owned by the registry;
// any thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct ProvidedKey {
  std::wstring name;
  std::vector<std::pair<std::wstring, std::wstring>> texts;  // values of type REG_SZ
};

// Answers the subkeys of the provided key, in order.
using KeyProvider = std::function<std::vector<ProvidedKey>()>;

// Makes the subkeys of this key of HKEY_LOCAL_MACHINE (any case, no leading backslash) come from
// the provider instead of the hive. An empty provider gives the key back to the hive, where it is
// an ordinary one. Provided keys are read-only.
void SetKeyProvider(std::wstring_view path, KeyProvider provider);

// What is provided from the start, by path. Defined by the wiring.
std::vector<std::pair<std::wstring_view, KeyProvider>> DefaultKeyProviders();

}  // namespace platform
