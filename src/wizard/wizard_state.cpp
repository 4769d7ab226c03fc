#include "wizard/wizard_state.h"

#include <algorithm>

namespace quillgate {

WizardState::WizardState(Database& database)
    : none_(LogonSystem::kNone, database),
      quillgate_(LogonSystem::kQuillgate, database),
      windows_(LogonSystem::kWindows, database) {
  AddBuiltInUsers(none_);
}

void WizardState::ChooseSystem(LogonSystem system) {
  choices_.system = system;
  if (system != LogonSystem::kNone) chosenSystem_ = system;
}

LogonSystem WizardState::System() const {
  return choices_.isSimple ? LogonSystem::kNone : chosenSystem_;
}

UserCollection& WizardState::ListOf(LogonSystem system) {
  switch (system) {
    case LogonSystem::kQuillgate:
      return quillgate_;
    case LogonSystem::kWindows:
      return windows_;
    case LogonSystem::kNone:
      break;
  }
  return none_;
}

void WizardState::SetOverridePassword(std::wstring_view password) {
  User user = *none_.Find(kOverrideUserName);
  user.SetPassword(password);
  none_.Replace(std::move(user));
}

User WizardState::CommonUser() const {
  return *none_.Find(kCommonUserName);
}

void WizardState::ReplaceCommonUser(User user) {
  none_.Replace(std::move(user));
}

bool WizardState::RemoveUser(std::wstring_view name) {
  return !IsSetAdministrator(name) && Users().Remove(name);
}

std::wstring WizardState::AdministratorName() const {
  if (!administrator_.empty()) return administrator_;
  const std::vector<std::wstring> names = quillgate_.SortedNames();
  const auto found = std::ranges::find_if(
      names, [this](const std::wstring& each) { return quillgate_.Find(each)->IsAdministrator(); });
  return found == names.end() ? std::wstring() : *found;
}

bool WizardState::IsSetAdministrator(std::wstring_view name) const {
  return chosenSystem_ == LogonSystem::kQuillgate && !name.empty() && name == administrator_;
}

void WizardState::SetAdministrator(const std::wstring& name, std::wstring_view password) {
  const bool isOther = name != administrator_;
  const auto before = quillgate_.Find(name);
  const auto former = isOther ? quillgate_.Find(administrator_) : nullptr;
  const bool isRenamed = before == nullptr && former != nullptr && administratorBefore_ == nullptr;
  User user = before != nullptr ? *before : isRenamed ? *former : User(name);
  user.SetName(name);
  user.SetPassword(password);
  user.AssignAdministrator(true);
  if (before != nullptr) {
    quillgate_.Replace(std::move(user));
  } else {
    quillgate_.Add(std::move(user));
  }
  if (!isOther) return;
  if (former != nullptr) UndoAdministrator(*former);
  administrator_ = name;
  administratorBefore_ = before;
}

// Rules that have been entered meanwhile stay.
void WizardState::UndoAdministrator(const User& user) {
  if (administratorBefore_ == nullptr) {
    quillgate_.Remove(user.Name());
    return;
  }
  User undone = *administratorBefore_;
  undone.SetConnectHours(user.ConnectHours());
  undone.SetTimeLimit(user.TimeLimit());
  quillgate_.Replace(std::move(undone));
}

bool WizardState::Store(Settings& settings) {
  const LogonSystem system = System();
  return ListOf(system).SaveAll([&] { StoreLogonSystem(system, settings); });
}

}  // namespace quillgate
