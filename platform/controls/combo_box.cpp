#include "platform/controls/combo_box.h"

#include <algorithm>
#include <iterator>

#include "platform/controls/control_peers.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/locale_source.h"
#include "platform/kernel/log.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr DWORD kStyles = CBS_DROPDOWNLIST | CBS_SORT | CBS_HASSTRINGS;
constexpr DWORD kOwnStyles = 0xFFFF;  // the low word is the class's own
constexpr UINT kFirstMessage = 0x0140;
constexpr UINT kLastMessage = 0x0165;

bool IsSupported(DWORD style) {
  return (style & CBS_DROPDOWNLIST) == CBS_DROPDOWNLIST && (style & kOwnStyles & ~kStyles) == 0;
}

}  // namespace

std::unique_ptr<WindowPeer> ComboBox::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeComboBox(Origin(parent), *this);
}

std::optional<LRESULT> ComboBox::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NCCREATE:
      if (IsSupported(Self().Style())) return std::nullopt;
      LogLine("ComboBox: drop-down lists only");
      return FALSE;
    case WM_CREATE:
      Self().NoteText({});
      SettleHeight(true);
      return 0;
    case WM_SIZE:
      SettleHeight(false);
      return 0;
    case WM_SETFONT:
      ::DefWindowProcW(Self().Handle(), message, wParam, lParam);
      SettleHeight(false);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_SETTEXT:
      return CB_ERR;
    case WM_SETFOCUS:
      Command(CBN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS:
      Command(CBN_KILLFOCUS);
      return 0;
    default:
      if (message < kFirstMessage || message > kLastMessage) return std::nullopt;
      return AnswerItems(message, wParam, lParam);
  }
}

std::optional<LRESULT> ComboBox::AnswerItems(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* text = reinterpret_cast<const wchar_t*>(lParam);
  const int index = static_cast<int>(wParam);
  switch (message) {
    case CB_ADDSTRING:
      return Add(text);
    case CB_INSERTSTRING:
      return Insert(index, text);
    case CB_DELETESTRING:
      return Delete(wParam);
    case CB_RESETCONTENT:
      Clear();
      return CB_OKAY;
    case CB_GETCOUNT:
      return Count();
    case CB_GETCURSEL:
      return selected_;
    case CB_SETCURSEL:
      return Select(index);
    case CB_SELECTSTRING:
      return SelectString(index, text);
    case CB_FINDSTRING:
      return Find(index, text, Match::kPrefix);
    case CB_FINDSTRINGEXACT:
      return Find(index, text, Match::kWhole);
    case CB_GETLBTEXTLEN:
      return Has(wParam) ? static_cast<LRESULT>(items_[wParam].text.size()) : CB_ERR;
    case CB_GETLBTEXT:
      return CopyText(wParam, reinterpret_cast<wchar_t*>(lParam));
    case CB_GETITEMDATA:
      return Has(wParam) ? items_[wParam].data : CB_ERR;
    case CB_SETITEMDATA:
      if (!Has(wParam)) return CB_ERR;
      items_[wParam].data = lParam;
      return CB_OKAY;
    default:
      return Refuse("ComboBox", message, CB_ERR);
  }
}

void ComboBox::OnChosen(int index) {
  if (index == selected_) return;
  SetSelection(index);
  CommandLater(CBN_SELCHANGE);
}

LRESULT ComboBox::Add(const wchar_t* text) {
  if (text == nullptr) return CB_ERR;
  if ((Self().Style() & CBS_SORT) == 0) return Insert(-1, text);
  const auto after = std::ranges::upper_bound(
      items_, text, [](const auto& one, const auto& other) { return CompareTexts(one, other) < 0; },
      &Item::text);
  return Insert(static_cast<int>(after - items_.begin()), text);
}

LRESULT ComboBox::Insert(int index, const wchar_t* text) {
  if (text == nullptr || index > Count()) return CB_ERR;
  if (index < 0) index = Count();
  items_.insert(items_.begin() + index, Item{text, 0});
  if (Peer() != nullptr) Peer()->Insert(index, text);
  // The same item stays selected.
  if (index <= selected_) SetSelection(selected_ + 1);
  return index;
}

LRESULT ComboBox::Delete(WPARAM index) {
  if (!Has(index)) return CB_ERR;
  const int removed = static_cast<int>(index);
  items_.erase(items_.begin() + removed);
  if (Peer() != nullptr) Peer()->Remove(removed);
  if (removed == selected_) {
    SetSelection(-1);
  } else {
    SetSelection(removed < selected_ ? selected_ - 1 : selected_);
  }
  return Count();
}

void ComboBox::Clear() {
  items_.clear();
  if (Peer() != nullptr) Peer()->Clear();
  SetSelection(-1);
}

LRESULT ComboBox::Select(int index) {
  // An index that does not exist, and the documented -1, clear the selection.
  SetSelection(index >= 0 && index < Count() ? index : -1);
  return selected_;
}

LRESULT ComboBox::SelectString(int after, const wchar_t* prefix) {
  const int found = Find(after, prefix, Match::kPrefix);
  return found >= 0 ? Select(found) : CB_ERR;
}

LRESULT ComboBox::CopyText(WPARAM index, wchar_t* buffer) const {
  if (!Has(index) || buffer == nullptr) return CB_ERR;
  const std::wstring& text = items_[index].text;
  std::ranges::copy(text, buffer);
  buffer[text.size()] = L'\0';
  return static_cast<LRESULT>(text.size());
}

int ComboBox::Find(int after, const wchar_t* text, Match match) const {
  if (text == nullptr) return CB_ERR;
  const std::wstring wanted = LowerName(text);
  const auto matches = [&](const Item& item) {
    const std::wstring name = LowerName(item.text);
    return match == Match::kPrefix ? name.starts_with(wanted) : name == wanted;
  };
  for (int step = 0; step < Count(); ++step) {
    const int index = (std::clamp(after, -1, Count() - 1) + 1 + step) % Count();
    if (matches(items_[static_cast<std::size_t>(index)])) return index;
  }
  return CB_ERR;
}

void ComboBox::SetSelection(int index) {
  selected_ = index;
  Self().NoteText(index >= 0 ? items_[static_cast<std::size_t>(index)].text : std::wstring());
  if (Peer() != nullptr) Peer()->Select(index);
}

void ComboBox::SettleHeight(bool listToo) {
  if (Peer() == nullptr) return;
  const RECT& bounds = Self().Bounds();
  const int given = bounds.bottom - bounds.top;
  const int closed = Peer()->ClosedHeight();
  if (listToo) Peer()->SetListHeight(given - closed);
  if (given != closed) Resize(bounds.right - bounds.left, closed);
}

}  // namespace platform
