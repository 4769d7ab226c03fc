#include "accounts/logon_system.h"

namespace quillgate {

LogonSystem LogonSystemOf(std::wstring_view word) {
  if (word == L"QUILLGATE") return LogonSystem::kQuillgate;
  if (word == L"WINDOWS") return LogonSystem::kWindows;
  return LogonSystem::kNone;
}

std::wstring_view LogonSystemWord(LogonSystem system) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return L"QUILLGATE";
    case LogonSystem::kWindows:
      return L"WINDOWS";
    case LogonSystem::kNone:
      break;
  }
  return L"NONE";
}

std::wstring_view UserTableOf(LogonSystem system) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return L"Users_Quillgate";
    case LogonSystem::kWindows:
      return L"Users_Windows";
    case LogonSystem::kNone:
      break;
  }
  return L"Users_None";
}

LogonSystem CurrentLogonSystem(Settings& settings) {
  return LogonSystemIfKnown(settings).value_or(LogonSystem::kNone);
}

std::optional<LogonSystem> LogonSystemIfKnown(Settings& settings) {
  const auto word = settings.GetSettingIfKnown(SettingKey::kLogonSystem, L"NONE");
  return word ? std::optional(LogonSystemOf(*word)) : std::nullopt;
}

}  // namespace quillgate
