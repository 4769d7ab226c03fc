// Asks for a new password, twice. Created and run on the service main thread.
#pragma once

#include <optional>
#include <string>

#include "frame/dialog_object.h"
#include "frame/help_topics.h"

namespace quillgate {

class PasswordDialog final : public DialogObject {
 public:
  explicit PasswordDialog(const UiSurroundings& ui) : DialogObject(ui, kTopicSettingsUsers) {}

  // At most 64 characters, possibly none; nothing when it was cancelled. The owner may be null.
  std::optional<std::wstring> Run(HWND owner);

 private:
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;
  bool OnCommand(int control, int code) override;

  std::wstring password_;
};

}  // namespace quillgate
