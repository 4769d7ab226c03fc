#include "ui/dialog_prompts.h"

#include "ui/input_dialog.h"
#include "ui/logon_dialog.h"
#include "ui/message_boxes.h"

namespace quillgate {
namespace {

class LockedIndicator {
 public:
  explicit LockedIndicator(GateIndicator& indicator) : indicator_(indicator) { indicator_.Lock(); }
  ~LockedIndicator() { indicator_.Unlock(); }
  LockedIndicator(const LockedIndicator&) = delete;
  LockedIndicator& operator=(const LockedIndicator&) = delete;

 private:
  GateIndicator& indicator_;
};

}  // namespace

DialogPrompts::DialogPrompts(const UiSurroundings& ui, Settings& settings, const GdiPlus& gdiPlus,
                             GateIndicator& indicator)
    : ui_(ui), settings_(settings), gdiPlus_(gdiPlus), indicator_(indicator) {}

std::optional<std::wstring> DialogPrompts::AskLogon(LogonSystem system,
                                                    const LogonCandidates& candidates) {
  const LockedIndicator locked(indicator_);
  LogonDialog dialog({ui_, settings_, gdiPlus_, bannerTimerUsed_, passwordPause_}, system,
                     candidates);
  if (!dialog.Run(nullptr)) return {};
  return dialog.UserName();
}

std::optional<std::wstring> DialogPrompts::AskFirstUserName() {
  const LockedIndicator locked(indicator_);
  return InputDialog(ui_).Run(ui_.catalogue.GetMessageText(kMsgAddNewUser),
                              ui_.catalogue.GetMessageText(kMsgEnterFirstUser));
}

void DialogPrompts::TellFirstUserMade() {
  const LockedIndicator locked(indicator_);
  ShowInformation(nullptr, ui_.catalogue, ui_.catalogue.GetMessageText(kMsgFirstUserMade));
}

}  // namespace quillgate
