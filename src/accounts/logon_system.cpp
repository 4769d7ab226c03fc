#include "accounts/logon_system.h"

#include <algorithm>

namespace quillgate {
namespace {

struct SystemNames {
  LogonSystem system;
  std::wstring_view word;
  std::wstring_view userTable;
};
constexpr SystemNames kNone{LogonSystem::kNone, L"NONE", L"Users_None"};
constexpr SystemNames kSystems[] = {
    {LogonSystem::kQuillgate, L"QUILLGATE", L"Users_Quillgate"},
    {LogonSystem::kWindows, L"WINDOWS", L"Users_Windows"},
    kNone,
};

template <class Value>
const SystemNames& FindSystem(Value SystemNames::*member, const Value& value) {
  const auto found = std::ranges::find(kSystems, value, member);
  return found != std::end(kSystems) ? *found : kNone;
}

}  // namespace

LogonSystem LogonSystemOf(std::wstring_view word) {
  return FindSystem(&SystemNames::word, word).system;
}

std::wstring_view LogonSystemWord(LogonSystem system) {
  return FindSystem(&SystemNames::system, system).word;
}

std::wstring_view UserTableOf(LogonSystem system) {
  return FindSystem(&SystemNames::system, system).userTable;
}

LogonSystem CurrentLogonSystem(Settings& settings) {
  return LogonSystemIfKnown(settings).value_or(LogonSystem::kNone);
}

std::optional<LogonSystem> LogonSystemIfKnown(Settings& settings) {
  const auto word = settings.GetSettingIfKnown(SettingKey::kLogonSystem, L"NONE");
  return word ? std::optional(LogonSystemOf(*word)) : std::nullopt;
}

void StoreLogonSystem(LogonSystem system, Settings& settings) {
  settings.SetSetting(SettingKey::kLogonSystem, LogonSystemWord(system));
}

}  // namespace quillgate
