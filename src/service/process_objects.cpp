#include "service/process_objects.h"

namespace quillgate {
namespace {

constexpr std::uint32_t kLanguageBits = 0xFFFF;
constexpr std::uint32_t kDefaultSublanguage = 0x400;

}  // namespace

ProcessObjects::~ProcessObjects() {
  monitor_.reset();
  logon_.SetSessionControl(nullptr);
}

void ProcessObjects::ApplyLanguage() {
  const std::uint32_t stored = SettingNumber(settings_.GetSetting(SettingKey::kLanguage, L"0"));
  catalogue_.SetInterfaceLanguage((stored & kLanguageBits) | kDefaultSublanguage);
}

bool ProcessObjects::IsFirstStart() {
  return settings_.GetSetting(SettingKey::kFirstStart, L"1") == L"1";
}

void ProcessObjects::EnterDesktop() {
  try {
    if (!IsOnDesktop() && HasDesktop()) desktop_ = std::make_unique<DesktopObjects>(*this);
  } catch (...) {
    events_.LogCurrentException();
  }
  if (!IsOnDesktop()) indicator_.RelayWithoutTray();
}

void ProcessObjects::LeaveDesktop() {
  desktop_.reset();
}

SessionLog& ProcessObjects::Session() {
  if (session_ == nullptr) {
    session_ = std::make_unique<SessionLog>(SessionSurroundings{
        database_, settings_, catalogue_, calendar_, logon_, indicator_, &sessionEvents_});
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
  const auto users = std::make_shared<UserCollection>(system, database_);
  // Saving the built-in users replaces the table, so a table that could not be read must not count
  // as empty.
  if (users->Count() == 0 && !HasNoUsers(*users)) users->LoadAll();
  if (system == LogonSystem::kNone && HasNoUsers(*users)) EnsureBuiltInUsers(*users);
  for (const std::wstring& name : users->UnreadableNames()) {
    events_.LogEvent(L"The stored user cannot be read whole, so its rules may not hold: " + name);
  }
  logon_.SetUsers(users);
}

// Who chose NONE goes on with the override.
bool ProcessObjects::Switch(const std::function<bool()>& store) {
  return TakeOver(store, [this] {
    const bool isNone = CurrentLogonSystem(settings_) == LogonSystem::kNone;
    if (!isNone || !logon_.LogOnAs(kOverrideUserName)) logon_.LogOnWithoutAsking({});
  });
}

bool ProcessObjects::SetUp(const std::function<bool()>& store) {
  return TakeOver(store, [this] { logon_.LogOnWithoutAsking({}); });
}

void ProcessObjects::FollowSetup() noexcept {
  const auto isOutdated = [this] {
    const auto users = Users();
    return users != nullptr && users->IsOutdated();
  };
  try {
    // Asked again under the decision lock, since somebody else may load users meanwhile.
    if (isOutdated()) SetUp(isOutdated);
  } catch (...) {
    events_.LogCurrentException();
  }
}

// Nobody else decides about a logon meanwhile. Under QUILLGATE people log on themselves.
bool ProcessObjects::TakeOver(const std::function<bool()>& store,
                              const std::function<void()>& logOn) {
  const CriticalSectionLock hold(logon_.DecisionLock());
  if (!store()) return false;
  logonRequests_.LogOff(1);
  LoadUsers();
  if (CurrentLogonSystem(settings_) == LogonSystem::kQuillgate) return true;
  try {
    logOn();
  } catch (...) {
    events_.LogCurrentException();
  }
  return true;
}

bool ProcessObjects::HasNoUsers(const UserCollection& users) {
  try {
    DbRows rows;
    database_.DbQuery(L"SELECT COUNT(*) FROM " + std::wstring(users.Table()) + L";", rows);
    return rows.size() == 1 && rows.front().at(0) == L"0";
  } catch (...) {
    events_.LogCurrentException();
    return false;
  }
}

void ProcessObjects::ReleaseUsers() {
  logon_.SetUsers(nullptr);
}

void ProcessObjects::StartMonitor(std::function<void()> afterCycle) {
  if (monitor_ == nullptr) {
    monitor_ = std::make_unique<MonitorThread>(
        Session(), events_,
        MonitorThread::Callbacks{[this] { FollowSetup(); }, std::move(afterCycle)});
  }
  monitor_->Start();
}

}  // namespace quillgate
