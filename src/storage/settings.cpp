#include "storage/settings.h"

namespace quillgate {
namespace {

std::wstring UpperKey(std::wstring_view key) {
  std::wstring upper(key);
  for (wchar_t& each : upper) {
    if (each >= L'a' && each <= L'z') each = static_cast<wchar_t>(each - L'a' + L'A');
  }
  return upper;
}

std::wstring KeyText(SettingKey key) {
  return std::to_wstring(static_cast<unsigned>(key));
}

std::wstring SelectValue(const std::wstring& quotedKey) {
  return L"SELECT Value FROM Settings WHERE Key = " + quotedKey + L";";
}

}  // namespace

std::wstring Settings::GetSetting(std::wstring_view key, std::wstring_view defaultValue) {
  // A failure reads as the default. Deliberate, see docs/behaviour.md.
  return GetSettingIfKnown(key, defaultValue).value_or(std::wstring(defaultValue));
}

std::wstring Settings::GetSetting(SettingKey key, std::wstring_view defaultValue) {
  return GetSetting(KeyText(key), defaultValue);
}

std::optional<std::wstring> Settings::GetSettingIfKnown(std::wstring_view key,
                                                        std::wstring_view defaultValue) {
  return Select(&Database::Run, UpperKey(key), defaultValue);
}

std::optional<std::wstring> Settings::GetSettingIfKnown(SettingKey key,
                                                        std::wstring_view defaultValue) {
  return GetSettingIfKnown(KeyText(key), defaultValue);
}

std::optional<std::wstring> Settings::GetSettingAtOnce(SettingKey key,
                                                       std::wstring_view defaultValue) {
  return Select(&Database::RunAtOnce, KeyText(key), defaultValue);
}

std::optional<std::wstring> Settings::Select(Runner run, const std::wstring& key,
                                             std::wstring_view defaultValue) {
  try {
    DbRows rows;
    if (!(database_.*run)(SelectValue(SqlText(key)), rows)) return {};
    return rows.empty() ? std::wstring(defaultValue) : rows.front().front();
  } catch (const std::exception&) {
    return {};
  }
}

void Settings::SetSetting(std::wstring_view key, std::wstring_view value) {
  try {
    const std::wstring quotedKey = SqlText(UpperKey(key));
    const std::wstring quotedValue = SqlText(value);
    DbRows rows;
    // While the engine is busy, it is unknown whether the key exists. A second row with the same
    // key would never be read.
    if (!database_.Run(SelectValue(quotedKey), rows)) return;
    if (rows.empty()) {
      database_.DbExecute(L"INSERT INTO Settings (Key, Value) VALUES (" + quotedKey + L", " +
                          quotedValue + L");");
    } else {
      database_.DbExecute(L"UPDATE Settings SET Value = " + quotedValue + L" WHERE Key = " +
                          quotedKey + L";");
    }
  } catch (const std::exception&) {
    // The option keeps its old value.
  }
}

void Settings::SetSetting(SettingKey key, std::wstring_view value) {
  SetSetting(KeyText(key), value);
}

std::uint32_t SettingNumber(std::wstring_view text) {
  std::uint32_t number = 0;
  for (const wchar_t each : text) {
    if (each < L'0' || each > L'9') break;
    number = number * 10 + static_cast<std::uint32_t>(each - L'0');
  }
  return number;
}

}  // namespace quillgate
