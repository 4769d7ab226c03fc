// Asks for one line of text. Made and run on the service main thread.
#pragma once

#include <optional>
#include <string>

#include "frame/dialog_object.h"

namespace quillgate {

class InputDialog final : public DialogObject {
 public:
  explicit InputDialog(const UiSurroundings& ui) : DialogObject(ui, {}) {}

  // The text, at most 511 characters and possibly empty; nothing when it was cancelled.
  std::optional<std::wstring> Run(const std::wstring& caption, const std::wstring& prompt);

 private:
  INT_PTR DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
  bool OnInitDialog(HWND window) override;
  void SetTexts(HWND window) override;

  std::wstring caption_;
  std::wstring prompt_;
  std::wstring text_;
};

}  // namespace quillgate
