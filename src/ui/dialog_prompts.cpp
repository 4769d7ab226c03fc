#include "ui/dialog_prompts.h"

#include "frame/help_topics.h"
#include "frame/input_dialog.h"
#include "frame/message_boxes.h"
#include "ui/logon_dialog.h"

namespace quillgate {
DialogPrompts::DialogPrompts(const UiSurroundings& ui, Settings& settings, const GdiPlus& gdiPlus,
                             GateIndicator& indicator)
    : ui_(ui), settings_(settings), gdiPlus_(gdiPlus), indicator_(indicator) {}

std::optional<std::wstring> DialogPrompts::AskLogon(LogonSystem system,
                                                    const LogonCandidates& candidates) {
  const IndicatorLock locked(indicator_);
  LogonDialog dialog({ui_, settings_, gdiPlus_, bannerTimerUsed_, passwordPause_}, system,
                     candidates);
  if (!dialog.Run(nullptr)) return {};
  return dialog.UserName();
}

std::optional<std::wstring> DialogPrompts::AskFirstUserName() {
  const IndicatorLock locked(indicator_);
  for (;;) {
    auto name = InputDialog(ui_, kTopicLogon).Run(nullptr, kMsgAddNewUser, kMsgEnterFirstUser);
    // The caller decides whether to prompt again after an empty name.
    if (!name || name->empty() || IsStorableUserName(*name)) return name;
    ShowError(nullptr, ui_.catalogue, ui_.catalogue.GetMessageText(kMsgInvalidUserName));
  }
}

void DialogPrompts::NotifyFirstUserMade() {
  const IndicatorLock locked(indicator_);
  ShowInformation(nullptr, ui_.catalogue, ui_.catalogue.GetMessageText(kMsgFirstUserMade));
}

}  // namespace quillgate
