// The key/value store of the program's options, in the table Settings. Forgiving by design: nothing
// throws, what cannot be read is the caller's default, what cannot be written is dropped. Any
// thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "storage/database.h"
#include "storage/setting_keys.h"

namespace quillgate {

class Settings {
 public:
  explicit Settings(Database& database) : database_(database) {}

  // Keys are upper-cased (a to z only). Booleans are "YES" and "NO", numbers decimal text.
  std::wstring GetSetting(std::wstring_view key, std::wstring_view defaultValue);
  std::wstring GetSetting(SettingKey key, std::wstring_view defaultValue);
  void SetSetting(std::wstring_view key, std::wstring_view value);
  void SetSetting(SettingKey key, std::wstring_view value);

 private:
  Database& database_;
};

// The number that the leading decimal digits of a stored text make; 0 for an empty or non-numeric
// text. Values past 32 bits wrap.
std::uint32_t SettingNumber(std::wstring_view text);

}  // namespace quillgate
