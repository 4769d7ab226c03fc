// A dialog in which the user enters one line of text. Created and run on the service main thread.
#pragma once

#include <optional>
#include <string>

#include "frame/dialog_object.h"

namespace quillgate {

class InputDialog final : public DialogObject {
 public:
  InputDialog(const UiSurroundings& ui, std::wstring helpTopic)
      : DialogObject(ui, std::move(helpTopic)) {}

  // Returns the text, at most 511 characters and possibly empty; nullopt when the dialog was
  // cancelled. The owner may be null.
  std::optional<std::wstring> Run(HWND owner, MessageId caption, MessageId prompt);

 private:
  bool OnCommand(int control, int code) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  MessageId caption_ = 0;
  MessageId prompt_ = 0;
  std::wstring text_;
};

}  // namespace quillgate
