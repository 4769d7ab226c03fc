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

bool IsSupported(const DialogTemplate& made) {
  const DWORD unknown = made.style & ~kSupportedStyles;
  const DWORD unknownEx = made.exStyle & ~kSupportedExStyles;
  if (unknown == 0 && unknownEx == 0) return true;
  char text[80];
  std::snprintf(text, sizeof text, "dialog: styles 0x%08X, 0x%08X: not supported",
                unsigned{unknown}, unsigned{unknownEx});
  LogLine(text);
  ::SetLastError(ERROR_INVALID_PARAMETER);
  return false;
}

SIZE SizeOf(const RECT& place) {
  return {place.right - place.left, place.bottom - place.top};
}

RECT MovedTo(const RECT& place, POINT corner) {
  const SIZE size = SizeOf(place);
  return {corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
}

RECT WindowBounds(HWND window) {
  RECT place{};
  if (window != nullptr) ::GetWindowRect(window, &place);
  return place;
}

// Relative to the parent of a child; a top-level dialog stands in the work area, or relative to its
// owner.
RECT PlaceOf(const DialogTemplate& made, const DialogUnits& units, HWND owner) {
  const RECT place = units.Pixels(made.place);
  if ((made.style & WS_CHILD) != 0) return place;
  const RECT ownerBounds = WindowBounds(owner);
  const POINT corner = {ownerBounds.left, ownerBounds.top};
  if ((made.style & DS_CENTER) != 0) return CentredBounds(SizeOf(place), corner);
  return MovedTo(place, {corner.x + place.left, corner.y + place.top});
}

HWND MakeWindow(const DialogTemplate& made, const DialogOrigin& origin, const RECT& place) {
  const SIZE size = SizeOf(place);
  // It is shown when it is complete.
  return ::CreateWindowExW(made.exStyle, L"#32770", made.title.c_str(), made.style & ~WS_VISIBLE,
                           place.left, place.top, size.cx, size.cy, origin.owner, nullptr,
                           origin.instance, nullptr);
}

void SendFont(HWND window, HFONT font) {
  ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

bool MakeItem(HWND dialog, const DialogItem& item, const DialogUnits& units, HINSTANCE instance,
              HFONT font) {
  const RECT place = units.Pixels(item.place);
  const SIZE size = SizeOf(place);
  const HWND made =
      ::CreateWindowExW(item.exStyle, item.className.c_str(), item.text.c_str(),
                        item.style | WS_CHILD, place.left, place.top, size.cx, size.cy, dialog,
                        reinterpret_cast<HMENU>(UINT_PTR{item.id}), instance, nullptr);
  if (made == nullptr) {
    LogLine("dialog: no control " + std::to_string(item.id) + " of class " + Utf8(item.className));
    return false;
  }
  if (item.helpId != 0) ::SetWindowContextHelpId(made, item.helpId);
  SendFont(made, font);
  return true;
}

int FirstDefaultButton(HWND dialog) {
  for (const auto& control : ControlsOf(dialog)) {
    if ((DialogCodeOf(control->Handle()) & DLGC_DEFPUSHBUTTON) != 0)
      return static_cast<int>(control->Id());
  }
  return 0;
}

// False when the dialog is gone or a control could not be made.
bool Fill(HWND dialog, const DialogTemplate& made, const DialogUnits& units, HINSTANCE instance,
          HFONT font) {
  for (const DialogItem& item : made.items) {
    if (!MakeItem(dialog, item, units, instance, font)) return false;
  }
  return ::IsWindow(dialog) != FALSE;
}

// WM_INITDIALOG and what its answer asks for.
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

HWND CreateDialogFrom(const DialogTemplate& made, const DialogOrigin& origin) {
  if (!IsSupported(made)) return nullptr;
  JoinDesktop(CurrentQueue());
  const LOGFONTW logicalFont =
      LogicalFontOf(made.font.value_or(DialogFont{8, 0, false, L"MS Shell Dlg"}));
  OwnedFont font(::CreateFontIndirectW(&logicalFont));
  const HFONT fontHandle = font.get();
  const DialogUnits units = UnitsOf(logicalFont);
  const HWND dialog = MakeWindow(made, origin, PlaceOf(made, units, origin.owner));
  const FoundDialog found = FindDialog(dialog);
  if (found.control == nullptr) return nullptr;
  found.control->Equip(std::move(font), units, origin.procedure);
  found.window->NoteFont(fontHandle);
  found.window->SetHelpContext(made.helpId);
  if (origin.isModal) found.control->SetModal();
  SendFont(dialog, fontHandle);
  if (!Fill(dialog, made, units, origin.instance, fontHandle)) {
    ::DestroyWindow(dialog);
    return nullptr;
  }
  found.control->SetDefaultId(FirstDefaultButton(dialog));
  Initialise(dialog, origin.parameter);
  if (origin.isModal || (made.style & WS_VISIBLE) != 0) Show(dialog, found);
  return ::IsWindow(dialog) ? dialog : nullptr;
}

}  // namespace platform
