#include "service/process_objects.h"

namespace quillgate {

ProcessObjects::~ProcessObjects() {
  monitor_.reset();
  logon_.SetSessionControl(nullptr);
}

void ProcessObjects::EnterDesktop() {
  try {
    if (HasDesktop()) desktop_ = std::make_unique<DesktopObjects>(*this);
  } catch (...) {
    events_.LogCurrentException();
  }
  if (desktop_ == nullptr) indicator_.RelayWithoutTray();
}

void ProcessObjects::LeaveDesktop() {
  desktop_.reset();
}

SessionLog& ProcessObjects::Session() {
  if (session_ == nullptr) {
    session_ = std::make_unique<SessionLog>(
        SessionSurroundings{database_, settings_, catalogue_, calendar_, logon_, indicator_});
    sharedSession_ = session_.get();
    logon_.SetSessionControl(session_.get());
    if (!session_->IsHookAvailable()) ReportMissingHook();
  }
  return *session_;
}

void ProcessObjects::ReportMissingHook() {
  events_.LogEvent(
      L"The IP filter hook driver is not available, so traffic cannot be blocked. Error=" +
      std::to_wstring(session_->HookError()));
}

void ProcessObjects::BeginSession() {
  RecoverSessions();
  logonRequests_.LogOff(1);
  LoadUsers();
  if (CurrentLogonSystem(settings_) != LogonSystem::kQuillgate) logonRequests_.LogOn();
}

void ProcessObjects::RecoverSessions() noexcept {
  try {
    Session().RecoverSessions();
  } catch (...) {
    events_.LogCurrentException();
  }
}

void ProcessObjects::OpenGateForGood() {
  SessionLog* session = sharedSession_;
  if (session != nullptr) session->OpenForGood();
}

// With the wrong logon system the loaded users would be useless until the service is restarted. So
// a database that is in use at the start is waited for; each attempt then takes some seconds.
LogonSystem ProcessObjects::AwaitLogonSystem() {
  constexpr int kAttempts = 10;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (const auto system = LogonSystemIfKnown(settings_)) return *system;
  }
  return LogonSystem::kNone;
}

void ProcessObjects::LoadUsers() {
  const LogonSystem system = AwaitLogonSystem();
  users_ = std::make_shared<UserCollection>(system, database_);
  // Saving the built-in users replaces the table, so a table that could not be read must not count
  // as empty.
  if (users_->Count() == 0 && !HasNoUsers()) users_->LoadAll();
  if (system == LogonSystem::kNone && HasNoUsers()) EnsureBuiltInUsers(*users_);
  for (const std::wstring& name : users_->UnreadableNames()) {
    events_.LogEvent(L"The stored user cannot be read whole, so its rules may not hold: " + name);
  }
  logon_.SetUsers(users_);
}

// Nobody else decides about a logon meanwhile. Who chose NONE goes on with the override; under
// QUILLGATE people log on themselves.
bool ProcessObjects::Switch(const std::function<bool()>& store) {
  const CriticalSectionLock hold(logon_.DecisionLock());
  if (!store()) return false;
  logonRequests_.LogOff(1);
  LoadUsers();
  const LogonSystem system = CurrentLogonSystem(settings_);
  if (system == LogonSystem::kQuillgate) return true;
  try {
    if (system == LogonSystem::kWindows || !logon_.LogOnAs(kOverrideUserName))
      logon_.LogOnWithoutAsking({});
  } catch (...) {
    events_.LogCurrentException();
  }
  return true;
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
