#include "platform/controls/edit_control.h"

#include <algorithm>
#include <limits>

#include "platform/controls/control_peers.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles =
    ES_CENTER | ES_RIGHT | ES_PASSWORD | ES_AUTOHSCROLL | ES_READONLY | ES_NUMBER;
constexpr DWORD kOwnStyles = 0xFFFF;     // the low word is the class's own
constexpr int kNoLimit = 0x7FFFFFFE;     // what a limit of 0 means for a single line
constexpr DWORD kMostInResult = 0xFFFF;  // EM_GETSEL's result holds two words

}  // namespace

std::unique_ptr<WindowPeer> EditControl::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeEdit(Origin(parent), *this);
}

std::optional<LRESULT> EditControl::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCCREATE:
      if ((Self().Style() & kOwnStyles & ~kStyles) == 0) return std::nullopt;
      LogLine("Edit: this style is not supported");
      return FALSE;
    case WM_GETDLGCODE:
      return DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_HASSETSEL;
    case WM_SETTEXT:
      return SetContent(reinterpret_cast<const wchar_t*>(lParam));
    case WM_SETFOCUS:
      Command(EN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS:
      Command(EN_KILLFOCUS);
      return 0;
    case EM_SETSEL:
      Select(static_cast<int>(wParam), static_cast<int>(lParam));
      return 0;
    case EM_GETSEL:
      return Selection(reinterpret_cast<DWORD*>(wParam), reinterpret_cast<DWORD*>(lParam));
    case EM_SETLIMITTEXT:
      SetLimit(wParam);
      return 0;
    case EM_GETLIMITTEXT:
      return limit_;
    case EM_SETREADONLY:
      SetReadOnly(wParam != FALSE);
      return TRUE;
    default:
      if (message >= EM_GETSEL && message <= EM_GETLIMITTEXT) return Refuse("Edit", message, 0);
      return std::nullopt;
  }
}

void EditControl::OnEdited(const std::wstring& text) {
  Self().NoteText(text);
  CommandLater(EN_CHANGE);
}

LRESULT EditControl::SetContent(const wchar_t* text) {
  selection_ = {};
  Self().SetText(text != nullptr ? text : L"");
  Command(EN_CHANGE);
  return TRUE;
}

void EditControl::Select(int start, int end) {
  // A start below zero removes the selection; an end below zero means the end of the text.
  if (start < 0) start = end = Current().caret;
  if (end < 0) end = Length();
  selection_ = {std::min(start, Length()), std::min(end, Length())};
  if (Peer() != nullptr) Peer()->SetSelection(selection_);
}

EditSelection EditControl::Current() const {
  return Peer() != nullptr ? Peer()->Selection() : selection_;
}

LRESULT EditControl::Selection(DWORD* start, DWORD* end) const {
  const EditSelection now = Current();
  const auto low = static_cast<DWORD>(std::min(now.anchor, now.caret));
  const auto high = static_cast<DWORD>(std::max(now.anchor, now.caret));
  if (start != nullptr) *start = low;
  if (end != nullptr) *end = high;
  return high > kMostInResult ? -1 : MAKELONG(low, high);
}

void EditControl::SetLimit(WPARAM characters) {
  const bool unlimited = characters == 0 || characters > WPARAM{kNoLimit};
  limit_ = unlimited ? kNoLimit : static_cast<int>(characters);
  if (Peer() != nullptr) Peer()->SetLimit(limit_);
}

void EditControl::SetReadOnly(bool readOnly) {
  Self().SetStyleBit(ES_READONLY, readOnly);
  if (Peer() != nullptr) Peer()->SetReadOnly(readOnly);
}

}  // namespace platform
