#include "platform/controls/tab_control.h"

#include <algorithm>
#include <cstring>

#include "platform/controls/control_peers.h"
#include "platform/user/desktop.h"

namespace platform {
namespace {

constexpr UINT kLastMessage = TCM_FIRST + 62;
// The margins without a desktop, in pixels.
constexpr RECT kPlainMargins = {4, 24, 4, 4};

}  // namespace

std::unique_ptr<WindowPeer> TabControl::MakePeer(Window& /*window*/, WindowPeer* parent) {
  return DesktopSide<ControlSide>().Controls().MakeTab(Origin(parent), *this);
}

std::optional<LRESULT> TabControl::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* item = reinterpret_cast<const TCITEMW*>(lParam);
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case TCM_INSERTITEMW:
      return Insert(wParam, item);
    case TCM_SETITEMW:
      return SetItem(wParam, item);
    case TCM_GETITEMW:
      return GetItem(wParam, reinterpret_cast<TCITEMW*>(lParam));
    case TCM_GETITEMCOUNT:
      return static_cast<LRESULT>(tabs_.size());
    case TCM_DELETEALLITEMS:
      Clear();
      return TRUE;
    case TCM_GETCURSEL:
      return selected_;
    case TCM_SETCURSEL:
      return Select(wParam);
    case TCM_ADJUSTRECT:
      if (lParam != 0) Adjust(wParam != FALSE, *reinterpret_cast<RECT*>(lParam));
      return 0;
    default:
      if (message < TCM_FIRST || message > kLastMessage) return std::nullopt;
      return Refuse("tab control", message, 0);
  }
}

void TabControl::OnTabWanted(int index) {
  Later<TabControl>([index](TabControl& self) { self.ChangeTo(index); });
}

LRESULT TabControl::Insert(WPARAM index, const TCITEMW* item) {
  if (item == nullptr) return -1;
  const std::size_t position = std::min(static_cast<std::size_t>(index), tabs_.size());
  const int at = static_cast<int>(position);
  tabs_.insert(tabs_.begin() + at, Tab{});
  if (Peer() != nullptr) Peer()->Insert(at, L"");
  SetItem(position, item);
  // The first tab becomes the selected one; otherwise the same tab stays selected.
  if (tabs_.size() == 1) {
    SetSelection(0);
  } else if (at <= selected_) {
    SetSelection(selected_ + 1);
  }
  return at;
}

LRESULT TabControl::SetItem(WPARAM index, const TCITEMW* item) {
  if (!Has(index) || item == nullptr) return FALSE;
  Tab& tab = tabs_[index];
  if ((item->mask & TCIF_PARAM) != 0) tab.data = item->lParam;
  if ((item->mask & TCIF_TEXT) != 0 && item->pszText != nullptr) {
    tab.text = item->pszText;
    if (Peer() != nullptr) Peer()->SetTabText(static_cast<int>(index), tab.text);
  }
  return TRUE;
}

LRESULT TabControl::GetItem(WPARAM index, TCITEMW* item) const {
  if (!Has(index) || item == nullptr) return FALSE;
  const Tab& tab = tabs_[index];
  if ((item->mask & TCIF_PARAM) != 0) item->lParam = tab.data;
  if ((item->mask & TCIF_TEXT) != 0) CopyBounded(tab.text, item->pszText, item->cchTextMax);
  return TRUE;
}

void TabControl::Clear() {
  tabs_.clear();
  selected_ = -1;
  if (Peer() != nullptr) Peer()->Clear();
}

LRESULT TabControl::Select(WPARAM index) {
  if (!Has(index)) return -1;
  const int before = selected_;
  SetSelection(static_cast<int>(index));
  return before;
}

void TabControl::SetSelection(int index) {
  selected_ = index;
  if (Peer() != nullptr) Peer()->Select(index);
}

void TabControl::ChangeTo(int index) {
  if (index == selected_ || !Has(static_cast<WPARAM>(index))) return;
  NMHDR notification{};
  if (Notify(TCN_SELCHANGING, notification) != FALSE) return;
  // The parent may have removed the tab, or destroyed the control.
  if (!Self().IsLive() || !Has(static_cast<WPARAM>(index))) return;
  SetSelection(index);
  Notify(TCN_SELCHANGE, notification);
}

void TabControl::Adjust(bool toWindow, RECT& area) const {
  const RECT margins = Peer() != nullptr ? Peer()->Margins() : kPlainMargins;
  const LONG sign = toWindow ? -1 : 1;
  area.left += sign * margins.left;
  area.top += sign * margins.top;
  area.right -= sign * margins.right;
  area.bottom -= sign * margins.bottom;
}

}  // namespace platform
