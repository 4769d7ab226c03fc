// The setup wizard's page of the users of the chosen logon system. What is entered is kept when
// another user is selected and when the page is left. Owned by the wizard.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame/list_view.h"
#include "settings/limit_controls.h"
#include "settings/user_rights.h"
#include "wizard/setup_page.h"

namespace quillgate {

class UserSetupPage final : public SetupPage {
 public:
  UserSetupPage(const WizardSurroundings& surroundings, WizardState& state);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;
  bool OnNotify(const NMHDR& header) override;
  void OnSetActive() override;
  bool AcceptsNext() override { return Keep(); }
  bool AcceptsBack() override { return Keep(); }

  // Lists the users and shows the one of that name, or else the first.
  void ListUsers(const std::wstring& name);
  void AddRow(const User& user);
  // Shows the user of a row of the list; nullopt: the list is empty.
  void ShowUser(std::optional<std::size_t> row);
  void EnableControls() const;
  UserRights Rights() const;
  void OnSelected(std::size_t row);

  // Keeps what has been entered of the user who is shown. False when a name or a limit is refused,
  // which the user is told.
  bool Keep();
  bool IsNameAccepted(const std::wstring& name) const;

  void AddUser();
  // Nullopt when it was cancelled.
  std::optional<std::wstring> ChooseNewName();
  void RemoveUser();
  void ChangeHours();

  ListView List() const;
  LimitControls Limit() const;
  // Empty when nobody is shown.
  std::wstring ShownName() const { return shown_ ? names_[*shown_] : std::wstring(); }

  std::vector<std::wstring> names_;   // of the rows of the list
  std::optional<std::size_t> shown_;  // its row
  bool isPasswordNew_ = false;
  bool isShowing_ = false;  // the controls are being filled
};

}  // namespace quillgate
