#include "platform/dialog/dialog_creation.h"

#include <cstdio>

#include "platform/dialog/default_button.h"
#include "platform/dialog/dialog_control.h"
#include "platform/dialog/dialog_order.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kSupportedStyles = DS_3DLOOK | DS_FIXEDSYS | DS_SETFONT | DS_MODALFRAME |
                                   DS_SETFOREGROUND | DS_CONTROL | DS_CENTER | WS_POPUP | WS_CHILD |
                                   WS_VISIBLE | WS_DISABLED | WS_CAPTION | WS_SYSMENU;
constexpr DWORD kSupportedExStyles = WS_EX_CONTROLPARENT;

bool IsSupported(const DialogTemplate& dialogTemplate) {
  const DWORD unknown = dialogTemplate.style & ~kSupportedStyles;
  const DWORD unknownEx = dialogTemplate.exStyle & ~kSupportedExStyles;
  if (unknown == 0 && unknownEx == 0) return true;
  char text[80];
  std::snprintf(text, sizeof text, "dialog: styles 0x%08X, 0x%08X: not supported",
                unsigned{unknown}, unsigned{unknownEx});
  LogLine(text);
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

SIZE SizeOf(const RECT& bounds) {
  return {bounds.right - bounds.left, bounds.bottom - bounds.top};
}

RECT MovedTo(const RECT& bounds, POINT corner) {
  const SIZE size = SizeOf(bounds);
  return {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
}

RECT WindowBounds(HWND window) {
  RECT bounds{};
  if (window != nullptr) ::GetWindowRect(window, &bounds);
  return bounds;
}

// The bounds of the new dialog: relative to the parent for a child; for a top-level dialog centred
// in the work area (DS_CENTER) or relative to the owner.
RECT BoundsOf(const DialogTemplate& dialogTemplate, const DialogUnits& units, HWND owner) {
  const RECT bounds = units.Pixels(dialogTemplate.place);
  if ((dialogTemplate.style & WS_CHILD) != 0) return bounds;
  const RECT ownerBounds = WindowBounds(owner);
  const POINT corner = {ownerBounds.left, ownerBounds.top};
  if ((dialogTemplate.style & DS_CENTER) != 0) return CentredBounds(SizeOf(bounds), corner);
  return MovedTo(bounds, {corner.x + bounds.left, corner.y + bounds.top});
}

HWND MakeWindow(const DialogTemplate& dialogTemplate, const DialogOrigin& origin,
                const RECT& bounds) {
  const SIZE size = SizeOf(bounds);
  // The dialog is shown when it is complete.
  return ::CreateWindowExW(dialogTemplate.exStyle, L"#32770", dialogTemplate.title.c_str(),
                           dialogTemplate.style & ~WS_VISIBLE, bounds.left, bounds.top, size.cx,
                           size.cy, origin.owner, nullptr, origin.instance, nullptr);
}

void SendFont(HWND window, HFONT font) {
  ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

bool MakeItem(HWND dialog, const DialogItem& item, const DialogUnits& units, HINSTANCE instance,
              HFONT font) {
  const RECT bounds = units.Pixels(item.place);
  const SIZE size = SizeOf(bounds);
  const HWND control =
      ::CreateWindowExW(item.exStyle, item.className.c_str(), item.text.c_str(),
                        item.style | WS_CHILD, bounds.left, bounds.top, size.cx, size.cy, dialog,
                        reinterpret_cast<HMENU>(UINT_PTR{item.id}), instance, nullptr);
  if (control == nullptr) {
    LogLine("dialog: no control " + std::to_string(item.id) + " of class " + Utf8(item.className));
    return false;
  }
  if (item.helpId != 0) ::SetWindowContextHelpId(control, item.helpId);
  SendFont(control, font);
  return true;
}

int FirstDefaultButton(HWND dialog) {
  for (const auto& control : ControlsOf(dialog)) {
    if ((DialogCodeOf(control->Handle()) & DLGC_DEFPUSHBUTTON) != 0)
      return static_cast<int>(control->Id());
  }
  return 0;
}

// False when the dialog is gone or a control could not be created.
bool Fill(HWND dialog, const DialogTemplate& dialogTemplate, const DialogUnits& units,
          HINSTANCE instance, HFONT font) {
  for (const DialogItem& item : dialogTemplate.items) {
    if (!MakeItem(dialog, item, units, instance, font)) return false;
  }
  return ::IsWindow(dialog) != FALSE;
}

// Sends WM_INITDIALOG, and sets the focus if the reply requests that.
void Initialise(HWND dialog, LPARAM parameter) {
  const auto first = NextTabStop(dialog, nullptr, true);
  const HWND candidate = first != nullptr ? first->Handle() : nullptr;
  const LRESULT chooseFocus =
      ::SendMessageW(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(candidate), parameter);
  if (::IsWindow(dialog) && chooseFocus != 0) FocusFirst(dialog, candidate);
}

void Show(HWND dialog, const FoundDialog& found) {
  if (found.control->Outcome()->ended || !::IsWindow(dialog)) return;
  ::ShowWindow(dialog, SW_SHOW);
  if (!found.window->IsChild()) ::SetForegroundWindow(dialog);
}

}  // namespace

RECT CentredBounds(SIZE size, POINT around) {
  if (!IsWindowThread()) return {0, 0, size.cx, size.cy};
  const RECT area = Desktop().Windows().WorkArea(around);
  const LONG x = std::max(area.left, (area.left + area.right - size.cx) / 2);
  const LONG y = std::max(area.top, (area.top + area.bottom - size.cy) / 2);
  return {x, y, x + size.cx, y + size.cy};
}

void FocusFirst(HWND dialog, HWND control) {
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return;
  const auto wanted = Resolve<Window>(HandleKind::kWindow, control);
  if (wanted != nullptr && TakesInput(*wanted)) {
    found.control->GiveFocus(control);
  } else if (const auto first = NextTabStop(dialog, control, true)) {
    found.control->GiveFocus(first->Handle());
  }
}

HWND CreateDialogFrom(const DialogTemplate& dialogTemplate, const DialogOrigin& origin) {
  if (!IsSupported(dialogTemplate)) return nullptr;
  JoinDesktop(CurrentQueue());
  const LOGFONTW logicalFont =
      LogicalFontOf(dialogTemplate.font.value_or(DialogFont{8, 0, false, L"MS Shell Dlg"}));
  OwnedFont font(::CreateFontIndirectW(&logicalFont));
  const HFONT fontHandle = font.get();
  const DialogUnits units = UnitsOf(logicalFont);
  const HWND dialog =
      MakeWindow(dialogTemplate, origin, BoundsOf(dialogTemplate, units, origin.owner));
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return nullptr;
  found.control->Equip(std::move(font), units, origin.procedure);
  found.window->NoteFont(fontHandle);
  found.window->SetHelpContext(dialogTemplate.helpId);
  if (origin.isModal) found.control->SetModal();
  SendFont(dialog, fontHandle);
  if (!Fill(dialog, dialogTemplate, units, origin.instance, fontHandle)) {
    ::DestroyWindow(dialog);
    return nullptr;
  }
  found.control->SetDefaultId(FirstDefaultButton(dialog));
  Initialise(dialog, origin.parameter);
  if (origin.isModal || (dialogTemplate.style & WS_VISIBLE) != 0) Show(dialog, found);
  return ::IsWindow(dialog) ? dialog : nullptr;
}

}  // namespace platform
