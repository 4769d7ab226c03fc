// What the setup wizard configures, shared by its pages: the users of the three logon systems as
// they were loaded and then changed, and the choices so far. Nothing is stored before Store. Lives
// while the wizard is open, on the thread that runs it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "accounts/user_collection.h"
#include "wizard/wizard_path.h"

namespace quillgate {

class WizardState {
 public:
  // Loads the users. Those of the NONE system that are missing are added with their defaults.
  explicit WizardState(Database& database);

  const WizardChoices& Choices() const { return choices_; }
  void ChooseType(bool isSimple) { choices_.isSimple = isSimple; }
  // NONE leaves the chosen logon system as it is. Deliberate, see docs/behaviour.md.
  void ChooseSystem(LogonSystem system);
  // The logon system that Store writes: NONE for the simple configuration.
  LogonSystem System() const;

  // --- the NONE system ---
  void SetOverridePassword(std::wstring_view password);
  // The record whose rules hold for everybody.
  User CommonUser() const;
  void ReplaceCommonUser(User user);

  // --- the users of the chosen logon system ---
  UserCollection& Users() { return ListOf(chosenSystem_); }
  LogonSystem UsersSystem() const { return chosenSystem_; }
  // False for the administrator of the administrator page, for the last administrator and when
  // there is no such user.
  bool RemoveUser(std::wstring_view name);

  // The administrator of the QUILLGATE system that the administrator page has set; before that, the
  // first one that was loaded. Empty: none.
  std::wstring AdministratorName() const;
  // Makes the user, or gives an existing one the password and the administrator's rights. What an
  // earlier call did to another user is undone.
  void SetAdministrator(const std::wstring& name, std::wstring_view password);
  // Whether the name is that of the latest SetAdministrator; the administrator page has its name
  // and password then.
  bool IsSetAdministrator(std::wstring_view name) const;

  // Writes the logon system and replaces its user table, in one transaction. False when that fails,
  // or when users have been stored elsewhere since the wizard loaded them; nothing is written then.
  bool Store(Settings& settings);

 private:
  UserCollection& ListOf(LogonSystem system);
  void UndoAdministrator(const User& user);

  UserCollection none_;
  UserCollection quillgate_;
  UserCollection windows_;
  WizardChoices choices_;
  LogonSystem chosenSystem_ = LogonSystem::kNone;
  std::wstring administrator_;
  // The administrator's record before it became one; null when the wizard has made the user.
  std::shared_ptr<const User> administratorBefore_;
};

}  // namespace quillgate
