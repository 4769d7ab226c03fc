#include "platform/registry/hive_key.h"

#include <algorithm>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

template <class Items>
auto FindNamed(Items& items, std::wstring_view name) {
  const auto found =
      std::ranges::find_if(items, [name](const auto& item) { return EqualNames(item.name, name); });
  return found == items.end() ? nullptr : &*found;
}

bool IsCharacter(wchar_t letter) {
  const auto code = static_cast<char32_t>(letter);
  return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF) && code != 0;
}

bool IsControl(wchar_t letter) {
  return letter < 0x20 || letter == 0x7F;
}

}  // namespace

HiveKey* HiveKey::FindKey(std::wstring_view keyName) {
  return FindNamed(keys, keyName);
}

const HiveKey* HiveKey::FindKey(std::wstring_view keyName) const {
  return FindNamed(keys, keyName);
}

HiveValue* HiveKey::FindValue(std::wstring_view valueName) {
  return FindNamed(values, valueName);
}

const HiveValue* HiveKey::FindValue(std::wstring_view valueName) const {
  return FindNamed(values, valueName);
}

const HiveKey* HiveKey::FindPath(const KeyPath& path) const {
  const HiveKey* key = this;
  for (const std::wstring& each : path) {
    key = key->FindKey(each);
    if (key == nullptr) return nullptr;
  }
  return key;
}

HiveKey& HiveKey::MakePath(const KeyPath& path) {
  HiveKey* key = this;
  for (const std::wstring& each : path) {
    HiveKey* next = key->FindKey(each);
    if (next == nullptr) next = &key->keys.emplace_back(HiveKey{each, {}, {}});
    key = next;
  }
  return *key;
}

bool IsKeyName(std::wstring_view name) {
  return !name.empty() && name.size() <= kMaximumKeyName &&
         std::ranges::all_of(name, [](wchar_t letter) {
           return IsCharacter(letter) && !IsControl(letter) && letter != L'\\';
         });
}

bool IsValueName(std::wstring_view name) {
  return name.size() <= kMaximumValueName && std::ranges::all_of(name, IsCharacter);
}

}  // namespace platform
