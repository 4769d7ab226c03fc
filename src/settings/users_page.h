// The settings sheet's page of users. New and Remove take effect at once; every other change is
// kept until it is applied, also while another user is shown. Owned by the sheet, used on the
// service main thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "frame/combo_box.h"
#include "frame/property_page.h"
#include "settings/limit_controls.h"
#include "settings/settings_surroundings.h"
#include "settings/sheet_state.h"
#include "settings/user_edits.h"
#include "settings/user_rights.h"

namespace quillgate {

class UsersPage final : public PropertyPage {
 public:
  UsersPage(const SettingsSurroundings& surroundings, SessionLog& session, SheetState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnActivated() override;
  bool OnApply(HWND window) override;
  void OnCancel(HWND window) override;

  // Closes the sheet once its owner is no longer logged on.
  void CheckOwner() const;

  // Takes the users of the logon system in force, and drops what was changed in others.
  void Reload();
  void ShowUser(const std::wstring& name);
  LimitControls Limit(const LimitFields& fields) const { return {Window(), fields}; }
  void EnableControls() const;
  UserRights Rights() const;

  void OnUserSelected();
  // Keeps what the controls hold as changes of the user who is shown. False when a limit is out of
  // range: the user has seen a message box, and the field has the focus.
  bool KeepEntered();
  // Applies a change to the user who is shown.
  template <class Change>
  void ChangeShown(Change&& change);

  void AddUser();
  // Nothing when it was cancelled or the accounts cannot be enumerated.
  std::optional<std::wstring> AskNewName();
  void RemoveUser();
  void ChangePassword();
  void ChangeHours();

  ComboBox List() const;
  HWND Sheet() const { return ::GetParent(Window()); }

  const SettingsSurroundings& surroundings_;
  SessionLog& session_;
  SheetState& state_;
  LogonSystem system_ = LogonSystem::kNone;
  std::shared_ptr<UserCollection> users_;
  std::optional<UserEdits> edits_;
  std::wstring shownName_;  // empty: no user is shown
  bool isShowing_ = false;  // the controls are being filled
};

}  // namespace quillgate
