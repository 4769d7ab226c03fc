#include "platform/dialog/dialog_control.h"

#include <algorithm>
#include <array>

#include "platform/dialog/default_button.h"
#include "platform/dialog/dialog_order.h"
#include "platform/dialog/dialog_peers.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

// Messages that the layer never sends, but a program may.
constexpr UINT kVKeyToItem = 0x002E;
constexpr UINT kCharToItem = 0x002F;
constexpr UINT kQueryDragIcon = 0x0037;
constexpr UINT kCompareItem = 0x0039;
constexpr UINT kFirstCtlColour = 0x0132;  // WM_CTLCOLORMSGBOX
constexpr UINT kLastCtlColour = 0x0138;   // WM_CTLCOLORSTATIC

// For these messages the dialog procedure returns the result itself, not whether it handled the
// message.
bool ResultIsProcedures(UINT message) {
  constexpr std::array kMessages = {WM_INITDIALOG, kVKeyToItem, kCharToItem, kQueryDragIcon,
                                    kCompareItem};
  const bool isColour = message >= kFirstCtlColour && message <= kLastCtlColour;
  return isColour || std::ranges::count(kMessages, message) > 0;
}

}  // namespace

std::unique_ptr<WindowPeer> DialogControl::MakePeer(Window& window, WindowPeer* parent) {
  if (window.IsChild()) return Desktop().Windows().MakePage(window.Events(), *parent);
  return DesktopSide<DialogSide>().Dialogs().MakeDialog(window.Events(), *this, parent);
}

LONG_PTR* DialogControl::Extra(int index) {
  switch (index) {
    case DWLP_MSGRESULT:
      return &messageResult_;
    case DWLP_DLGPROC:
      return &procedure_;
    case DWLP_USER:
      return &userData_;
    default:
      return nullptr;
  }
}

void DialogControl::Equip(OwnedFont font, const DialogUnits& units, DLGPROC procedure) {
  font_ = std::move(font);
  units_ = units;
  procedure_ = reinterpret_cast<LONG_PTR>(procedure);
}

void DialogControl::SetModal() {
  if (window_.Peer() != nullptr) static_cast<DialogPeer&>(*window_.Peer()).SetModal();
}

INT_PTR DialogControl::AskProcedure(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto procedure = reinterpret_cast<DLGPROC>(procedure_);
  if (procedure == nullptr) return FALSE;
  messageResult_ = 0;
  return procedure(window_.Handle(), message, wParam, lParam);
}

std::optional<LRESULT> DialogControl::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  const INT_PTR handled = AskProcedure(message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    // The modal loop of a dialog that was destroyed without EndDialog returns 0.
    outcome_->ended = true;
    font_.reset();
    window_.NoteFont(nullptr);
  }
  if (ResultIsProcedures(message)) {
    if (handled != 0 || message == WM_INITDIALOG) return handled;
    return std::nullopt;
  }
  if (handled != 0) return messageResult_;
  return window_.IsLive() ? AnswerByDefault(message, wParam, lParam) : std::nullopt;
}

std::optional<LRESULT> DialogControl::AnswerByDefault(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CLOSE:
      RequestCancel();
      return 0;
    case WM_NEXTDLGCTL:
      MoveFocusByMessage(wParam, lParam);
      return 0;
    case WM_ERASEBKGND:
      if (!paintBackground_) return std::nullopt;
      paintBackground_(reinterpret_cast<HDC>(wParam));
      return TRUE;
    case DM_GETDEFID:
      return AnswerDefaultId();
    case DM_SETDEFID:
      ChangeDefaultId(static_cast<int>(wParam));
      return TRUE;
    default:
      return std::nullopt;
  }
}

LRESULT DialogControl::AnswerDefaultId() const {
  return defaultId_ != 0 ? static_cast<LRESULT>(MAKELONG(defaultId_, DC_HASDEFID)) : 0;
}

void DialogControl::ChangeDefaultId(int id) {
  defaultId_ = id;
  MarkDefaultButton(window_.Handle(), ::GetFocus());
}

// Posted, so that Cancel is delivered in the same way by the keyboard and by the close box.
void DialogControl::RequestCancel() {
  const HWND button = ::GetDlgItem(window_.Handle(), IDCANCEL);
  if (button != nullptr && !::IsWindowEnabled(button)) return;
  ::PostMessageW(window_.Handle(), WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
}

// wParam is the control if the low word of lParam is not zero, else whether to move backwards.
void DialogControl::MoveFocusByMessage(WPARAM wParam, LPARAM lParam) {
  if (LOWORD(lParam) != FALSE) {
    GiveFocus(reinterpret_cast<HWND>(wParam));
  } else if (const auto next = NextTabStop(window_.Handle(), ::GetFocus(), wParam == FALSE)) {
    GiveFocus(next->Handle());
  }
}

void DialogControl::GiveFocus(HWND control) {
  if ((DialogCodeOf(control) & DLGC_HASSETSEL) != 0) ::SendMessageW(control, EM_SETSEL, 0, -1);
  ::SetFocus(control);
  MarkDefaultButton(window_.Handle(), control);
}

std::unique_ptr<Control> MakeDialogControl(Window& window) {
  return std::make_unique<DialogControl>(window);
}

FoundDialog FindDialog(HWND handle) {
  auto window = FindWindowOf(handle);
  if (window == nullptr) return {};
  auto* control = dynamic_cast<DialogControl*>(window->SystemControl());
  if (control == nullptr || !window->BelongsToCaller()) {
    ::SetLastError(control == nullptr ? ERROR_WINDOW_NOT_DIALOG : ERROR_WINDOW_OF_OTHER_THREAD);
    return {};
  }
  return {std::move(window), control};
}

}  // namespace platform
