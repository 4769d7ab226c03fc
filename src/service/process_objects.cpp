#include "service/process_objects.h"

namespace quillgate {

ProcessObjects::~ProcessObjects() {
  monitor_.reset();
  logon_.SetSessionControl(nullptr);
}

void ProcessObjects::EnterDesktop() {
  if (!HasDesktop()) return;
  try {
    desktop_ = std::make_unique<DesktopObjects>(*this);
  } catch (...) {
    events_.LogCurrentException();
  }
}

void ProcessObjects::LeaveDesktop() {
  desktop_.reset();
}

SessionLog& ProcessObjects::Session() {
  if (session_ == nullptr) {
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    logon_.SetSessionControl(session_.get());
    if (!session_->IsHookAvailable()) TellMissingHook();
  }
  return *session_;
}

void ProcessObjects::TellMissingHook() {
  events_.LogEvent(
      L"The IP filter hook driver is not available, so traffic cannot be blocked. Error=" +
      std::to_wstring(session_->HookError()));
}

void ProcessObjects::LoadUsers() {
  const LogonSystem system = CurrentLogonSystem(settings_);
  users_ = std::make_shared<UserCollection>(system, database_);
  // Saving the two replaces the table, so a table that could not be read must not count as empty.
  if (users_->Count() == 0 && !HasNoUsers()) users_->LoadAll();
  if (system == LogonSystem::kNone && HasNoUsers()) EnsureBuiltInUsers(*users_);
  logon_.SetUsers(users_);
}

bool ProcessObjects::HasNoUsers() {
  try {
    DbRows rows;
    database_.DbQuery(L"SELECT COUNT(*) FROM " + std::wstring(users_->Table()) + L";", rows);
    return rows.size() == 1 && rows.front().at(0) == L"0";
  } catch (...) {
    events_.LogCurrentException();
    return false;
  }
}

void ProcessObjects::ReleaseUsers() {
  logon_.SetUsers(nullptr);
  users_.reset();
}

void ProcessObjects::StartMonitor() {
  if (monitor_ == nullptr) monitor_ = std::make_unique<MonitorThread>(Session(), events_);
  monitor_->Start();
}

}  // namespace quillgate
