#include "frame/input_dialog.h"

#include "frame/edit.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kMaximumLength = 511;

}  // namespace

std::optional<std::wstring> InputDialog::Run(const std::wstring& caption,
                                             const std::wstring& prompt) {
  caption_ = caption;
  prompt_ = prompt;
  if (RunModal(IDD_INPUT, nullptr) != IDOK) return {};
  return std::move(text_);
}

bool InputDialog::OnInitDialog(HWND window) {
  Edit(window, IDC_INPUT_EDIT).LimitLength(kMaximumLength);
  return true;
}

void InputDialog::SetTexts(HWND window) {
  ::SetWindowTextW(window, caption_.c_str());
  Control(window, IDC_INPUT_PROMPT).SetText(prompt_);
  Control(window, IDOK).SetText(Catalogue().GetMessageText(kMsgOk));
  Control(window, IDCANCEL).SetText(Catalogue().GetMessageText(kMsgCancel));
}

INT_PTR InputDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_COMMAND) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK:
      text_ = Edit(window, IDC_INPUT_EDIT).Text();
      ::EndDialog(window, IDOK);
      return TRUE;
    case IDCANCEL:
      ::EndDialog(window, IDCANCEL);
      return TRUE;
    default:
      return FALSE;
  }
}

}  // namespace quillgate
