// Asks which account of the machine becomes a user. Created and run on the service main thread.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "frame/dialog_object.h"

namespace quillgate {

class AccountDialog final : public DialogObject {
 public:
  // The names outlive the dialog.
  AccountDialog(const UiSurroundings& ui, std::span<const std::wstring> names)
      : DialogObject(ui, {}), names_(names) {}

  // One of the names; nothing when it was cancelled. The owner may be null.
  std::optional<std::wstring> Run(HWND owner);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;

  std::span<const std::wstring> names_;
  std::wstring chosen_;
};

}  // namespace quillgate
