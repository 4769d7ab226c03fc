// The key/value store of the program's options, in the table Settings. No function throws: a value
// that cannot be read is the caller's default, a value that cannot be written is dropped.
// Deliberate, see docs/behaviour.md. Any thread.
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

  // Keys are converted to upper case (a to z only). Booleans are "YES" and "NO", numbers decimal
  // text.
  std::wstring GetSetting(std::wstring_view key, std::wstring_view defaultValue);
  std::wstring GetSetting(SettingKey key, std::wstring_view defaultValue);
  // As GetSetting, for callers that distinguish a failure from a missing value: nullopt on a
  // failure.
  std::optional<std::wstring> GetSettingIfKnown(std::wstring_view key,
                                                std::wstring_view defaultValue);
  std::optional<std::wstring> GetSettingIfKnown(SettingKey key, std::wstring_view defaultValue);
  // As GetSettingIfKnown, for callers that must not wait for the database: nullopt when it is not
  // available at once.
  std::optional<std::wstring> GetSettingAtOnce(SettingKey key, std::wstring_view defaultValue);
  void SetSetting(std::wstring_view key, std::wstring_view value);
  void SetSetting(SettingKey key, std::wstring_view value);

 private:
  using Runner = bool (Database::*)(const std::wstring& sql, DbRows& rows);
  std::optional<std::wstring> Select(Runner run, const std::wstring& key,
                                     std::wstring_view defaultValue);

  Database& database_;
};

// The number formed by the leading decimal digits of a stored text; 0 when there are none.
// Deliberate, see docs/behaviour.md. Values past 32 bits wrap.
std::uint32_t SettingNumber(std::wstring_view text);

}  // namespace quillgate
