#include "platform/registry/provided_keys.h"

#include <winreg.h>

#include <algorithm>
#include <cstring>
#include <mutex>

#include "platform/kernel/encoding.h"
#include "platform/registry/key_provider.h"

namespace platform {
namespace {

struct Provision {
  KeyPath path;
  KeyProvider provider;
};

struct Provisions {
  std::mutex mutex;
  std::vector<Provision> all;
};

Provisions* MakeProvisions() {
  auto* const provisions = new Provisions;
  for (const auto& [path, provider] : DefaultKeyProviders())
    provisions->all.push_back({SplitKeyPath(path), provider});
  return provisions;
}

Provisions& List() {
  static Provisions& list = *MakeProvisions();
  return list;
}

bool StartsWith(const KeyPath& path, const KeyPath& start) {
  return path.size() >= start.size() &&
         std::equal(start.begin(), start.end(), path.begin(), EqualNames);
}

std::optional<Provision> ProvisionOver(const KeyPath& path) {
  const std::lock_guard lock(List().mutex);
  for (const Provision& each : List().all) {
    if (StartsWith(path, each.path)) return each;
  }
  return std::nullopt;
}

HiveKey MakeKey(const ProvidedKey& provided) {
  HiveKey key{provided.name, {}, {}};
  for (const auto& [name, text] : provided.texts) {
    HiveValue value{name, REG_SZ, std::vector<BYTE>((text.size() + 1) * sizeof(wchar_t))};
    std::memcpy(value.data.data(), text.c_str(), value.data.size());
    key.values.push_back(std::move(value));
  }
  return key;
}

}  // namespace

KeyPath SplitKeyPath(std::wstring_view path) {
  KeyPath names;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(L'\\'), path.size());
    if (end != 0) names.emplace_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return names;
}

bool IsProvidedPath(const KeyPath& path) {
  return ProvisionOver(path).has_value();
}

std::optional<HiveKey> FindProvidedKey(const KeyPath& path) {
  const std::optional<Provision> provision = ProvisionOver(path);
  if (!provision) return std::nullopt;
  HiveKey key{provision->path.back(), {}, {}};
  for (const ProvidedKey& each : provision->provider())
    key.keys.push_back(MakeKey(each));
  const KeyPath below(path.begin() + static_cast<std::ptrdiff_t>(provision->path.size()),
                      path.end());
  const HiveKey* found = key.FindPath(below);
  return found == nullptr ? std::nullopt : std::optional(*found);
}

std::vector<std::wstring> NamesTowardProvidedKeys(const KeyPath& path) {
  std::vector<std::wstring> names;
  const std::lock_guard lock(List().mutex);
  for (const Provision& each : List().all) {
    if (each.path.size() > path.size() && StartsWith(each.path, path)) {
      names.push_back(each.path[path.size()]);
    }
  }
  return names;
}

void SetKeyProvider(std::wstring_view path, KeyProvider provider) {
  const KeyPath names = SplitKeyPath(path);
  const std::lock_guard lock(List().mutex);
  std::erase_if(List().all, [&names](const Provision& each) {
    return each.path.size() == names.size() && StartsWith(each.path, names);
  });
  if (provider) List().all.push_back({names, std::move(provider)});
}

}  // namespace platform
