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
  constexpr ControlText kTexts[] = {{IDC_ABOUT_NAME, kMsgProductName}, {IDOK, kMsgOk}};
  ShowCaption(kMsgAboutCaption);
  ShowTexts(kTexts);
  Control(window, IDC_ABOUT_VERSION)
      .SetText(Catalogue().GetMessageText(kMsgVersion, QG_VERSION_MAJOR, QG_VERSION_MINOR,
                                          QG_VERSION_PATCH));
}

bool AboutDialog::OnCommand(int control, int) {
  return EndBy(control);
}

}  // namespace quillgate
