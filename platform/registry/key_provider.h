// Providers of registry keys that are not stored but built when they are read, such as the network
// cards. Owned by the registry; any thread.
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

// Returns the subkeys of the provided key, in order.
using KeyProvider = std::function<std::vector<ProvidedKey>()>;

// Registers the provider for the subkeys of this key of HKEY_LOCAL_MACHINE (any case, no leading
// backslash), which hide those of the hive. An empty provider makes the key an ordinary key of the
// hive again. Provided keys are read-only.
void SetKeyProvider(std::wstring_view path, KeyProvider provider);

// The providers that are registered from the start, by path. Defined by the wiring.
std::vector<std::pair<std::wstring_view, KeyProvider>> DefaultKeyProviders();

}  // namespace platform
