#include "frame/input_dialog.h"

#include "frame/edit.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kMaximumLength = 511;

}  // namespace

std::optional<std::wstring> InputDialog::Run(HWND owner, MessageId caption, MessageId prompt) {
  caption_ = caption;
  prompt_ = prompt;
  if (RunModal(IDD_INPUT, owner) != IDOK) return {};
  return std::move(text_);
}

bool InputDialog::OnInitDialog(HWND window) {
  Edit(window, IDC_INPUT_EDIT).LimitLength(kMaximumLength);
  return true;
}

void InputDialog::SetTexts(HWND) {
  ShowCaption(caption_);
  const ControlText texts[] = {{IDC_INPUT_PROMPT, prompt_}, {IDOK, kMsgOk}, {IDCANCEL, kMsgCancel}};
  ShowTexts(texts);
}

bool InputDialog::OnCommand(int control, int) {
  if (control == IDOK) text_ = Edit(Window(), IDC_INPUT_EDIT).Text();
  return EndBy(control);
}

}  // namespace quillgate
