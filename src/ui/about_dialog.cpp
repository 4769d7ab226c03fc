#include "ui/about_dialog.h"

#include "frame/control.h"
#include "frame/help_topics.h"
#include "resources/resource.h"
#include "resources/version.h"

namespace quillgate {

AboutDialog::AboutDialog(const UiSurroundings& ui) : DialogObject(ui, kTopicIndex) {}

void AboutDialog::Run() {
  RunModal(IDD_ABOUT, nullptr);
}

void AboutDialog::SetTexts(HWND window) {
  const MessageCatalogue& texts = Catalogue();
  ::SetWindowTextW(window, texts.GetMessageText(kMsgAboutCaption).c_str());
  Control(window, IDC_ABOUT_NAME).SetText(texts.GetMessageText(kMsgProductName));
  Control(window, IDC_ABOUT_VERSION)
      .SetText(
          texts.GetMessageText(kMsgVersion, QG_VERSION_MAJOR, QG_VERSION_MINOR, QG_VERSION_PATCH));
  Control(window, IDOK).SetText(texts.GetMessageText(kMsgOk));
}

INT_PTR AboutDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM) {
  if (message != WM_COMMAND) return FALSE;
  const WORD command = LOWORD(wParam);
  if (command != IDOK && command != IDCANCEL) return FALSE;
  ::EndDialog(window, command);
  return TRUE;
}

}  // namespace quillgate
