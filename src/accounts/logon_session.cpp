#include "accounts/logon_session.h"

namespace quillgate {
// Marks that a prompt is open, for the lifetime of the object.
class LogonSession::OpenQuestion {
 public:
  explicit OpenQuestion(LogonSession& session) : session_(session) { session_.asking_ = true; }
  ~OpenQuestion() {
    const CriticalSectionLock hold(session_.decision_);
    session_.asking_ = false;
  }
  OpenQuestion(const OpenQuestion&) = delete;
  OpenQuestion& operator=(const OpenQuestion&) = delete;

 private:
  LogonSession& session_;
};

LogonSession::LogonSession(Settings& settings, WindowsIdentity& identity)
    : settings_(settings), identity_(identity) {}

void LogonSession::SetPrompts(LogonPrompts* prompts) {
  const CriticalSectionLock hold(decision_);
  prompts_ = prompts;
}

void LogonSession::SetSessionControl(SessionControl* session) {
  const CriticalSectionLock hold(decision_);
  session_ = session;
}

void LogonSession::SetUsers(std::shared_ptr<UserCollection> users) {
  const CriticalSectionLock decisionHold(decision_);
  const CriticalSectionLock hold(lock_);
  users_.swap(users);
}

bool LogonSession::IsLoggedOn() const {
  return CurrentUser() != nullptr;
}

std::shared_ptr<const User> LogonSession::CurrentUser() const {
  const CriticalSectionLock hold(lock_);
  return current_ == nullptr ? nullptr : current_->Latest();
}

void LogonSession::SetCurrent(std::shared_ptr<const UserEntry> user) {
  const CriticalSectionLock hold(lock_);
  current_.swap(user);
}

std::shared_ptr<UserCollection> LogonSession::Users() const {
  const CriticalSectionLock hold(lock_);
  return users_;
}

std::vector<std::wstring> LogonSession::Names() const {
  const auto users = Users();
  return users == nullptr ? std::vector<std::wstring>() : users->SortedNames();
}

bool LogonSession::Accepts(std::wstring_view name, std::wstring_view password) const {
  const auto users = Users();
  const auto user = users == nullptr ? nullptr : users->Find(name);
  return user != nullptr && user->CheckPassword(password);
}

// An unknown system must not be taken for one without a password prompt.
LogonSystem LogonSession::System() const {
  if (const auto known = LogonSystemIfKnown(settings_)) latestSystem_ = known;
  if (!latestSystem_) throw BusyError();
  return *latestSystem_;
}

bool LogonSession::Asks(LogonSystem system, std::wstring_view name) const {
  const bool hasQuestion = system == LogonSystem::kQuillgate ||
                           (system == LogonSystem::kNone && name == kOverrideUserName);
  return hasQuestion && prompts_ != nullptr;
}

bool LogonSession::LogOnWithoutAsking(std::wstring_view name) {
  const CriticalSectionLock hold(decision_);
  const LogonSystem system = System();
  if (Asks(system, name)) return false;
  if (IsLoggedOn()) LogOff(1);
  Decide(system, {});
  return true;
}

bool LogonSession::LogOnAs(std::wstring_view name) {
  const CriticalSectionLock hold(decision_);
  const auto users = Users();
  auto user = users == nullptr ? nullptr : users->FindEntry(name);
  if (user == nullptr) return false;
  if (IsLoggedOn()) LogOff(1);
  SetCurrent(std::move(user));
  if (session_ != nullptr) session_->Reevaluate();
  return true;
}

bool LogonSession::LogOn(std::wstring_view name) {
  LogonSystem system{};
  LogonPrompts* prompts = nullptr;
  std::optional<OpenQuestion> question;
  {
    const CriticalSectionLock hold(decision_);
    if (IsLoggedOn()) LogOff(1);
    system = System();
    const bool asks = Asks(system, name) && Users() != nullptr;
    if (!asks || asking_) return Decide(system, {});
    question.emplace(*this);
    prompts = prompts_;
  }
  const std::optional<std::wstring> acceptedName = Ask(*prompts, system);
  const CriticalSectionLock hold(decision_);
  question.reset();
  return Decide(system, acceptedName);
}

std::optional<std::wstring> LogonSession::Ask(LogonPrompts& prompts, LogonSystem system) {
  if (system == LogonSystem::kQuillgate && Names().empty() && !MakeFirstUser(prompts)) return {};
  return prompts.AskLogon(system, *this);
}

bool LogonSession::MakeFirstUser(LogonPrompts& prompts) {
  std::optional<std::wstring> name = prompts.AskFirstUserName();
  while (name && name->empty())
    name = prompts.AskFirstUserName();
  if (!name) return false;
  if (StoreFirstUser(*std::move(name))) {
    prompts.NotifyFirstUserMade();
    return true;
  }
  // Another thread may have created a user meanwhile; without users there is none to log on.
  return !Names().empty();
}

bool LogonSession::StoreFirstUser(std::wstring name) {
  const CriticalSectionLock hold(decision_);
  const auto users = Users();
  // Only while there are no users is an administrator created without a password prompt.
  if (users == nullptr || users->Count() != 0 ||
      users->Table() != UserTableOf(LogonSystem::kQuillgate)) {
    return false;
  }
  User user(std::move(name));
  user.AssignAdministrator(true);
  return users->AddStored(std::move(user));
}

bool LogonSession::Decide(LogonSystem system, const std::optional<std::wstring>& acceptedName) {
  const bool keepsUser = IsLoggedOn() && !acceptedName;
  if (keepsUser || system != System()) return IsLoggedOn();
  if (IsLoggedOn()) LogOff(1);
  SetCurrent(FindLogonUser(system, acceptedName));
  if (IsLoggedOn() && session_ != nullptr) session_->Reevaluate();
  return IsLoggedOn();
}

std::shared_ptr<const UserEntry> LogonSession::FindLogonUser(
    LogonSystem system, const std::optional<std::wstring>& acceptedName) const {
  const auto users = Users();
  if (users == nullptr || users->Table() != UserTableOf(system)) return nullptr;
  switch (system) {
    case LogonSystem::kQuillgate:
      return acceptedName ? users->FindEntry(*acceptedName) : nullptr;
    case LogonSystem::kWindows:
      return users->FindEntry(identity_.UserName());
    case LogonSystem::kNone:
      break;
  }
  return users->FindEntry(acceptedName ? kOverrideUserName : kCommonUserName);
}

void LogonSession::LogOff(int) {
  const CriticalSectionLock hold(decision_);
  try {
    if (session_ != nullptr) session_->EndSession();
  } catch (...) {
    SetCurrent(nullptr);
    throw;
  }
  SetCurrent(nullptr);
}

void LogonSession::RefreshCurrentUser() {
  const CriticalSectionLock hold(decision_);
  const auto current = CurrentUser();
  if (current == nullptr) return;
  const auto users = Users();
  SetCurrent(users == nullptr ? nullptr : users->FindEntry(current->Name()));
}

}  // namespace quillgate
