#include "settings/account_dialog.h"

#include <algorithm>
#include <vector>

#include "accounts/windows_users.h"
#include "frame/combo_box.h"
#include "frame/message_boxes.h"
#include "resources/resource.h"

namespace quillgate {

std::optional<std::wstring> AccountDialog::Run(HWND owner) {
  if (RunModal(IDD_ACCOUNT, owner) != IDOK) return {};
  return std::move(chosen_);
}

bool AccountDialog::OnInitDialog(HWND window) {
  const ComboBox list(window, IDC_ACCOUNT);
  for (const std::wstring& name : names_)
    list.Add(name);
  list.Select(0);
  Control(window, IDOK).Enable(!names_.empty());
  return true;
}

void AccountDialog::SetTexts(HWND) {
  constexpr ControlText kTexts[] = {
      {IDC_ACCOUNT_PROMPT, kMsgSelectUser}, {IDOK, kMsgOk}, {IDCANCEL, kMsgCancel}};
  ShowCaption(kMsgAddNewUser);
  ShowTexts(kTexts);
}

bool AccountDialog::OnCommand(int control, int) {
  if (control == IDOK) chosen_ = ComboBox(Window(), IDC_ACCOUNT).SelectedText();
  return EndBy(control);
}

std::optional<std::wstring> AskNewAccount(const UiSurroundings& ui, HWND owner,
                                          const UserCollection& users) {
  std::vector<std::wstring> names;
  if (!GetWindowsUserList(names)) {
    ShowError(owner, ui.catalogue, ui.catalogue.GetMessageText(kMsgNoWindowsUsers));
    return {};
  }
  std::erase_if(names, [&](const std::wstring& each) { return users.Contains(each); });
  std::ranges::sort(names);
  return AccountDialog(ui, names).Run(owner);
}

}  // namespace quillgate
