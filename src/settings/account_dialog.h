// Asks which account of the machine becomes a user. Created and run on the service main thread.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "accounts/user_collection.h"
#include "frame/dialog_object.h"
#include "frame/help_topics.h"

namespace quillgate {

class AccountDialog final : public DialogObject {
 public:
  // The names outlive the dialog.
  AccountDialog(const UiSurroundings& ui, std::span<const std::wstring> names)
      : DialogObject(ui, kTopicSettingsUsers), names_(names) {}

  // One of the names; nothing when it was cancelled. The owner may be null.
  std::optional<std::wstring> Run(HWND owner);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;

  std::span<const std::wstring> names_;
  std::wstring chosen_;
};

// Asks for an account of the machine that is not one of the users yet. Nothing when that was
// cancelled, or when the accounts cannot be enumerated, which the user is told.
std::optional<std::wstring> AskNewAccount(const UiSurroundings& ui, HWND owner,
                                          const UserCollection& users);

}  // namespace quillgate
