#include "accounts/logon_session.h"

namespace quillgate {

LogonSession::LogonSession(Settings& settings, LogonPrompts& prompts, WindowsIdentity& identity)
    : settings_(settings), prompts_(prompts), identity_(identity) {}

void LogonSession::SetSessionControl(SessionControl* session) {
  session_ = session;
}

void LogonSession::SetUsers(UserCollection* users) {
  users_ = users;
}

bool LogonSession::IsLoggedOn() const {
  return CurrentUser() != nullptr;
}

std::shared_ptr<const User> LogonSession::CurrentUser() const {
  const CriticalSectionLock hold(lock_);
  return current_;
}

void LogonSession::SetCurrent(std::shared_ptr<User> user) {
  const CriticalSectionLock hold(lock_);
  current_.swap(user);
}

bool LogonSession::LogOn(std::wstring_view name) {
  if (IsLoggedOn()) LogOff(1);
  if (users_ == nullptr) return false;
  SetCurrent(FindLogonUser(CurrentLogonSystem(settings_), name));
  if (IsLoggedOn() && session_ != nullptr) session_->Reevaluate();
  return IsLoggedOn();
}

std::shared_ptr<User> LogonSession::FindLogonUser(LogonSystem system, std::wstring_view name) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return FindQuillgateUser();
    case LogonSystem::kWindows:
      return users_->Find(identity_.UserName());
    case LogonSystem::kNone:
      break;
  }
  const bool overridden =
      name == kOverrideUserName && prompts_.AskLogon(LogonSystem::kNone, *users_).has_value();
  return users_->Find(overridden ? kOverrideUserName : kCommonUserName);
}

std::shared_ptr<User> LogonSession::FindQuillgateUser() {
  if (users_->Count() == 0 && !MakeFirstUser()) return nullptr;
  const auto accepted = prompts_.AskLogon(LogonSystem::kQuillgate, *users_);
  return accepted ? users_->Find(*accepted) : nullptr;
}

bool LogonSession::MakeFirstUser() {
  std::optional<std::wstring> name = prompts_.AskFirstUserName();
  while (name && name->empty())
    name = prompts_.AskFirstUserName();
  if (!name) return false;

  auto user = std::make_shared<User>(*std::move(name));
  user->AssignAdministrator(true);
  if (!users_->Add(std::move(user))) return true;
  users_->SaveAll();
  prompts_.TellFirstUserMade();
  return true;
}

void LogonSession::LogOff(int) {
  try {
    if (session_ != nullptr) session_->EndSession();
  } catch (...) {
    SetCurrent(nullptr);
    throw;
  }
  SetCurrent(nullptr);
}

void LogonSession::RefreshCurrentUser() {
  const std::shared_ptr<const User> current = CurrentUser();
  if (current == nullptr) return;
  SetCurrent(users_ == nullptr ? nullptr : users_->Find(current->Name()));
}

}  // namespace quillgate
