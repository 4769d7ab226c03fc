// The tree of keys and values of a hive; plain data. Names are compared case-insensitively. Keys
// and values stay in the order of their creation.
#pragma once

#include <windef.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {

inline constexpr std::size_t kMaximumKeyName = 255;
inline constexpr std::size_t kMaximumValueName = 16383;
inline constexpr std::size_t kMaximumKeyDepth = 512;

// The names of a key and of the keys above it, from the top; empty for the top itself.
using KeyPath = std::vector<std::wstring>;

struct HiveValue {
  std::wstring name;  // empty: the key's default value
  DWORD type = 0;
  std::vector<BYTE> data;

  bool operator==(const HiveValue&) const = default;
};

struct HiveKey {
  std::wstring name;
  std::vector<HiveValue> values;
  std::vector<HiveKey> keys;

  // Null when there is none. Valid until the vector changes.
  HiveKey* FindKey(std::wstring_view keyName);
  const HiveKey* FindKey(std::wstring_view keyName) const;
  HiveValue* FindValue(std::wstring_view valueName);
  const HiveValue* FindValue(std::wstring_view valueName) const;

  // The key at a path below this one; null when there is none.
  const HiveKey* FindPath(const KeyPath& path) const;
  // The same; creates the key and the keys above it when they are missing.
  HiveKey& MakePath(const KeyPath& path);
};

// Whether a hive can hold a key of that name: not empty, at most kMaximumKeyName characters, only
// valid characters, no control characters, and no backslash, which separates keys.
bool IsKeyName(std::wstring_view name);
// The same for a value: at most kMaximumValueName valid characters other than null; empty is the
// default value.
bool IsValueName(std::wstring_view name);

}  // namespace platform
