// The key/value store of the program's options, in the table Settings. Forgiving by design: nothing
// throws, what cannot be read is the caller's default, what cannot be written is dropped. Any
// thread.
#pragma once

#include <cstdint>
#include <optional>
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
  // For callers to whom a failure is not the same as a value that is missing: nothing then.
  std::optional<std::wstring> GetSettingIfKnown(std::wstring_view key,
                                                std::wstring_view defaultValue);
  std::optional<std::wstring> GetSettingIfKnown(SettingKey key, std::wstring_view defaultValue);
  // As above, for callers that must not wait for the database: nothing when it does not answer.
  std::optional<std::wstring> GetSettingAtOnce(SettingKey key, std::wstring_view defaultValue);
  void SetSetting(std::wstring_view key, std::wstring_view value);
  void SetSetting(SettingKey key, std::wstring_view value);

 private:
  using Runner = bool (Database::*)(const std::wstring& sql, DbRows& rows);
  std::optional<std::wstring> Select(Runner run, const std::wstring& key,
                                     std::wstring_view defaultValue);

  Database& database_;
};

// The number that the leading decimal digits of a stored text make; 0 for an empty or non-numeric
// text. Values past 32 bits wrap.
std::uint32_t SettingNumber(std::wstring_view text);

}  // namespace quillgate
