#include "session/session_log.h"

#include "usage/adapter_list.h"

namespace quillgate {

SessionLog::SessionLog(const SessionSurroundings& surroundings)
    : settings_(surroundings.settings),
      catalogue_(surroundings.catalogue),
      logon_(surroundings.logon),
      indicator_(surroundings.indicator),
      events_(surroundings.events),
      meter_(surroundings.logon),
      log_(surroundings.database),
      rules_(meter_, log_, rests_, surroundings.database, surroundings.calendar),
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
    // After the gate was opened, only texts are built; their failure must not prevent the exit.
  }
  hook_.Stop();
}

void SessionLog::OpenForGood() {
  // A thread that holds the lock for longer hangs.
  constexpr DWORD kLockTimeoutMilliseconds = 1000;
  // The lock is never left, so that no cycle closes the gate again before the process exits.
  [[maybe_unused]] const bool entered = lock_.TryEnter(kLockTimeoutMilliseconds);
  hook_.Pass();
  hook_.Stop();
}

void SessionLog::Enable() {
  const CriticalSectionLock hold(lock_);
  OpenGate();
}

void SessionLog::OpenGate() {
  meter_.NoteCounters();
  hook_.Pass();
  meter_.NoteTime();
  ShowGate(GateIcon::kEnabled, kMsgConnectionEnabled);
}

// Opens the gate for the current user.
void SessionLog::BeginSession() {
  OpenGate();
  const auto user = logon_.CurrentUser();
  if (events_ != nullptr && user != nullptr) events_->SessionBegan(user->Name());
}

void SessionLog::Disable() {
  NoteLocalPolicy();
  const CriticalSectionLock hold(lock_);
  CloseGate();
}

void SessionLog::CloseGate() {
  hook_.Block(localAllowed_);
  EndMeasuring();
}

// Blocks before the counters are read, so that nothing passes after the reading.
void SessionLog::EndMeasuredSession(AccessReason reason) {
  hook_.Block(localAllowed_);
  if (const auto user = logon_.CurrentUser()) {
    const SessionRecord session = meter_.Record(user->Name());
    rests_.Add(session);
    log_.Keep(session);
    if (events_ != nullptr && meter_.IsOnline()) events_->SessionEnded(session, reason);
  }
  EndMeasuring();
}

void SessionLog::EndMeasuring() {
  meter_.End();
  ShowGate(GateIcon::kDisabled, kMsgConnectionDisabled);
}

void SessionLog::NoteLocalPolicy() {
  const auto setting = settings_.GetSettingAtOnce(SettingKey::kLocalTrafficAllowed, kNo);
  if (setting) localAllowed_ = *setting == kYes;
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
  NoteLocalPolicy();
  {
    const CriticalSectionLock hold(lock_);
    warnings_.Clear();
    sessionEnded_ = true;
    EndMeasuredSession(AccessReason::kNobodyLoggedOn);
  }
  WriteFinished();
}

void SessionLog::Write(const std::function<ConnectionLog::Batch()>& due) {
  const CriticalSectionLock turn(databaseTurn_);
  ConnectionLog::Batch batch;
  {
    // Finished and running sessions of one moment: a session must not be in both or in neither.
    const CriticalSectionLock hold(lock_);
    batch = due();
  }
  if (batch.IsToBeWritten()) {
    log_.Write(batch);
    const CriticalSectionLock hold(lock_);
    log_.Forget(batch);
  }
  batch.refused.Rethrow();
}

void SessionLog::WriteFinished() {
  Write([this] { return log_.Due({}); });
}

void SessionLog::SnapshotSession() {
  {
    const CriticalSectionLock hold(lock_);
    if (!logon_.IsLoggedOn() && !log_.HasUnwritten()) return;
  }
  Write([this] {
    const auto user = logon_.CurrentUser();
    return log_.Due(user == nullptr ? std::nullopt : std::optional(meter_.Record(user->Name())));
  });
}

void SessionLog::RecoverSessions() {
  {
    const CriticalSectionLock hold(lock_);
    log_.KeepCrashed();
  }
  WriteFinished();
}

void SessionLog::ClearWarnings() {
  const CriticalSectionLock hold(lock_);
  warnings_.Clear();
}

void SessionLog::RefreshTotals() {
  const CriticalSectionLock turn(databaseTurn_);
  const std::shared_ptr<const User> user = logon_.CurrentUser();
  if (user == nullptr) return;
  {
    const CriticalSectionLock hold(lock_);
    rules_.BeginRefresh();
  }
  const LoggedUsage logged = rules_.ReadTotals(*user);
  const CriticalSectionLock hold(lock_);
  rules_.EndRefresh(*user, logged);
}

AccessReason SessionLog::CheckAccess(bool refresh) {
  if (refresh) RefreshTotals();
  const CriticalSectionLock hold(lock_);
  return Judge();
}

std::wstring SessionLog::ReasonText(AccessReason reason) const {
  return quillgate::ReasonText(reason, catalogue_);
}

std::uint64_t SessionLog::TimeLeft() const {
  const CriticalSectionLock hold(lock_);
  const auto user = logon_.CurrentUser();
  return user == nullptr ? 0 : rules_.TimeLeft(*user);
}

std::uint64_t SessionLog::BytesLeft() const {
  const CriticalSectionLock hold(lock_);
  const auto user = logon_.CurrentUser();
  return user == nullptr ? 0 : rules_.BytesLeft(*user);
}

AccessReason SessionLog::Judge() const {
  const auto user = logon_.CurrentUser();
  return rules_.CheckAccess(user.get());
}

void SessionLog::RunEnforcementCycle() {
  NoteLocalPolicy();
  AssertGate();
  FirstFailure failure;
  failure.Run([this] { RefreshDueTotals(); });
  if (SwitchGate()) WriteClosedSession();
  failure.Rethrow();
  GiveWarnings();
  SnapshotSession();
}

// Other programs may have changed the machine's packet filter meanwhile, and a driver may open the
// gate for a limited time only.
void SessionLog::AssertGate() {
  const CriticalSectionLock hold(lock_);
  if (!meter_.IsOnline()) {
    hook_.Block(localAllowed_);
  } else if (Judge() == AccessReason::kAllowed) {
    hook_.Pass();
  }
}

// A closed gate is not opened by totals that could not be read; an open one is judged by the totals
// last read. When the limits' periods have changed, the totals are worth the wait: the baselines of
// other periods could close a gate that may be open.
bool SessionLog::MustKnowTotals() const {
  const CriticalSectionLock hold(lock_);
  const auto user = logon_.CurrentUser();
  if (user == nullptr) return false;
  return rules_.AreOfOtherPeriods(*user) || (rules_.IsStale() && !meter_.IsOnline());
}

void SessionLog::RefreshDueTotals() {
  if (MustKnowTotals()) RefreshTotals();
}

bool SessionLog::SwitchGate() {
  const CriticalSectionLock hold(lock_);
  const AccessReason reason = Judge();
  if (meter_.IsOnline()) {
    if (reason == AccessReason::kAllowed) return false;
    EndMeasuredSession(reason);
    NotifyDisabled(ReasonText(reason));
    return log_.HasUnwritten();
  }
  if (reason != AccessReason::kAllowed || sessionEnded_ || MustKnowTotals()) return false;
  BeginSession();
  indicator_.ShowMessage(catalogue_.GetMessageText(kMsgConnectionEnabled),
                         catalogue_.GetMessageText(kMsgProductName), BalloonIcon::kInformation, 0);
  return false;
}

void SessionLog::WriteClosedSession() {
  FirstFailure failure;
  failure.Run([this] { WriteFinished(); });
  // The totals now include the session that was just written.
  failure.Run([this] { RefreshTotals(); });
  failure.Rethrow();
}

void SessionLog::GiveWarnings() {
  std::shared_ptr<const User> user;
  {
    const CriticalSectionLock hold(lock_);
    user = logon_.CurrentUser();
    if (user == nullptr || !meter_.IsOnline() || !warnings_.MayBeDue(*user)) return;
  }
  const WarningThresholds thresholds = warnings_.ReadThresholds(*user);
  const CriticalSectionLock hold(lock_);
  if (logon_.CurrentUser() == user && meter_.IsOnline()) {
    warnings_.WarnIfDue(*user, thresholds, rules_);
  }
}

void SessionLog::Reevaluate() {
  try {
    RefreshTotals();
  } catch (...) {
    // The gate stays as it is until a cycle can read the totals.
    const CriticalSectionLock hold(lock_);
    sessionEnded_ = false;
    throw;
  }
  NoteLocalPolicy();
  const CriticalSectionLock hold(lock_);
  sessionEnded_ = false;
  warnings_.Clear();
  const AccessReason reason = Judge();
  if (reason == AccessReason::kAllowed) {
    BeginSession();
    return;
  }
  CloseGate();
  const std::wstring text = ReasonText(reason);
  if (!text.empty()) NotifyDisabled(text);
}

void SessionLog::ShowGate(GateIcon icon, MessageId state) {
  indicator_.SetIcon(icon);
  indicator_.SetTip(catalogue_.GetMessageText(kMsgProductName) + L" - " +
                    catalogue_.GetMessageText(state));
}

void SessionLog::NotifyDisabled(const std::wstring& reasonText) {
  indicator_.ShowMessage(reasonText, catalogue_.GetMessageText(kMsgConnectionDisabled),
                         BalloonIcon::kError, 0);
}

}  // namespace quillgate
