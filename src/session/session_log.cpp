#include "session/session_log.h"

#include "usage/adapter_list.h"

namespace quillgate {

SessionLog::SessionLog(const SessionSurroundings& surroundings)
    : settings_(surroundings.settings),
      catalogue_(surroundings.catalogue),
      logon_(surroundings.logon),
      indicator_(surroundings.indicator),
      meter_(surroundings.logon),
      log_(surroundings.database),
      rules_(surroundings.logon, meter_, log_, surroundings.database, surroundings.calendar),
      warnings_(surroundings.settings, surroundings.catalogue, surroundings.indicator) {
  indicator_.SetIcon(GateIcon::kUndecided);
  indicator_.Show();
  if (hook_.Start()) Enable();
  meter_.SetAdapter(ChooseAdapter(settings_));
}

SessionLog::~SessionLog() {
  try {
    meter_.SetAdapter(nullptr);
    Enable();
  } catch (...) {
    // Only texts are made after the gate was opened; what fails with them is not worth the exit.
  }
  hook_.Stop();
}

void SessionLog::Enable() {
  const CriticalSectionLock hold(lock_);
  meter_.NoteCounters();
  hook_.Pass();
  meter_.NoteTime();
  ShowGate(GateIcon::kEnabled, kMsgConnectionEnabled);
}

void SessionLog::Disable() {
  const CriticalSectionLock hold(lock_);
  hook_.Block(settings_.GetSetting(SettingKey::kLocalTrafficAllowed, kNo) == kYes);
  meter_.End();
  ShowGate(GateIcon::kDisabled, kMsgConnectionDisabled);
}

bool SessionLog::IsOnline() const {
  const CriticalSectionLock hold(lock_);
  return meter_.IsOnline();
}

bool SessionLog::IsHookAvailable() const {
  const CriticalSectionLock hold(lock_);
  return hook_.IsAvailable();
}

DWORD SessionLog::HookError() const {
  const CriticalSectionLock hold(lock_);
  return hook_.Error();
}

std::uint32_t SessionLog::SecondsOnline() const {
  const CriticalSectionLock hold(lock_);
  return meter_.SecondsOnline();
}

std::uint64_t SessionLog::BytesReceived() const {
  const CriticalSectionLock hold(lock_);
  return meter_.BytesReceived();
}

std::uint64_t SessionLog::BytesSent() const {
  const CriticalSectionLock hold(lock_);
  return meter_.BytesSent();
}

DATE SessionLog::StartDate() const {
  const CriticalSectionLock hold(lock_);
  return meter_.StartDate();
}

SessionReading SessionLog::Reading() const {
  const CriticalSectionLock hold(lock_);
  return {meter_.IsOnline(), meter_.SecondsOnline(), meter_.BytesReceived(), meter_.BytesSent()};
}

void SessionLog::SetAdapter(std::wstring serviceName) {
  const CriticalSectionLock hold(lock_);
  meter_.SetAdapterName(std::move(serviceName));
}

void SessionLog::ReloadAdapter() {
  SetAdapter(settings_.GetSetting(SettingKey::kAdapter, L""));
}

void SessionLog::EndSession() {
  const CriticalSectionLock hold(lock_);
  warnings_.Clear();
  sessionEnded_ = true;
  std::exception_ptr failure;
  try {
    if (logon_.IsLoggedOn()) {
      FinishSession();
    } else {
      log_.Settle();
    }
  } catch (...) {
    failure = std::current_exception();
  }
  Disable();
  if (failure) std::rethrow_exception(failure);
}

void SessionLog::SnapshotSession() {
  const CriticalSectionLock hold(lock_);
  if (const auto user = logon_.CurrentUser()) {
    log_.Snapshot(meter_.Record(user->Name()));
  } else if (log_.HasUnwritten()) {
    log_.Settle();
  }
}

void SessionLog::RecoverSessions() {
  const CriticalSectionLock hold(lock_);
  log_.Recover();
}

AccessReason SessionLog::CheckAccess(bool refresh) {
  const CriticalSectionLock hold(lock_);
  return rules_.CheckAccess(refresh);
}

std::wstring SessionLog::ReasonText(AccessReason reason) const {
  return quillgate::ReasonText(reason, catalogue_);
}

std::uint64_t SessionLog::TimeLeft() const {
  const CriticalSectionLock hold(lock_);
  return rules_.TimeLeft();
}

std::uint64_t SessionLog::BytesLeft() const {
  const CriticalSectionLock hold(lock_);
  return rules_.BytesLeft();
}

void SessionLog::RunEnforcementCycle() {
  const CriticalSectionLock hold(lock_);
  SwitchGate();
  const auto user = logon_.CurrentUser();
  if (meter_.IsOnline() && user != nullptr) warnings_.WarnIfDue(*user, rules_);
  SnapshotSession();
}

void SessionLog::SwitchGate() {
  // A closed gate is not opened on totals that could not be read; an open one is judged by the last
  // that could.
  const bool refresh = rules_.IsStale() && !meter_.IsOnline();
  const AccessReason reason = rules_.CheckAccess(refresh);
  if (meter_.IsOnline()) {
    if (reason != AccessReason::kAllowed) CloseFor(reason);
    return;
  }
  if (reason != AccessReason::kAllowed || sessionEnded_) return;
  Enable();
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgConnectionEnabled),
                         catalogue_.GetMessageText(kMsgProductName), BalloonIcon::kInformation, 0);
}

void SessionLog::CloseFor(AccessReason reason) {
  std::exception_ptr failure;
  try {
    FinishSession();
  } catch (...) {
    failure = std::current_exception();
  }
  try {
    // The session that was just written now counts among the totals.
    rules_.CheckAccess(true);
  } catch (...) {
    failure = std::current_exception();
  }
  Disable();
  TellDisabled(ReasonText(reason));
  if (failure) std::rethrow_exception(failure);
}

void SessionLog::FinishSession() {
  const auto user = logon_.CurrentUser();
  if (user != nullptr) log_.Finish(meter_.Record(user->Name()));
}

void SessionLog::Reevaluate() {
  const CriticalSectionLock hold(lock_);
  sessionEnded_ = false;
  const AccessReason reason = rules_.CheckAccess(true);
  warnings_.Clear();
  if (reason == AccessReason::kAllowed) {
    Enable();
    return;
  }
  Disable();
  const std::wstring text = ReasonText(reason);
  if (!text.empty()) TellDisabled(text);
}

void SessionLog::ShowGate(GateIcon icon, MessageId state) {
  indicator_.SetIcon(icon);
  indicator_.SetTip(catalogue_.GetMessageText(kMsgProductName) + L" - " +
                    catalogue_.GetMessageText(state));
}

void SessionLog::TellDisabled(const std::wstring& reasonText) {
  indicator_.ShowMessage(reasonText, catalogue_.GetMessageText(kMsgConnectionDisabled),
                         BalloonIcon::kError, 0);
}

}  // namespace quillgate
