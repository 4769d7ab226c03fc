#include "ui/owner_draw_menu.h"

#include <algorithm>
#include <cstddef>

#include "frame/icon.h"

namespace quillgate {
namespace {

constexpr int kIconColumnWidth = 20;
constexpr int kIconMargin = 1;
constexpr int kTextLeft = 24;
constexpr UINT kExtraWidth = 25;
constexpr UINT kLeastHeight = 20;

// Text height of the item measured last, in pixels. All items are measured in the same font.
int textHeight = 0;

LOGFONTW MenuFont() {
  NONCLIENTMETRICSW metrics{};
  // The size without the last member, which older systems do not support.
  metrics.cbSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
  ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  return metrics.lfMenuFont;
}

FontHandle MakeFont(LOGFONTW font, LONG weight) {
  font.lfWeight = weight;
  return FontHandle(::CreateFontIndirectW(&font));
}

BrushHandle MakeBrush(COLORREF colour) {
  const LOGBRUSH brush{BS_SOLID, colour, 0};
  return BrushHandle(::CreateBrushIndirect(&brush));
}

// Sets the text colours of a context and restores the previous ones in the destructor.
class TextColours {
 public:
  TextColours(HDC context, COLORREF text, COLORREF background)
      : context_(context),
        text_(::SetTextColor(context, text)),
        background_(::SetBkColor(context, background)) {}
  ~TextColours() {
    ::SetBkColor(context_, background_);
    ::SetTextColor(context_, text_);
  }
  TextColours(const TextColours&) = delete;
  TextColours& operator=(const TextColours&) = delete;

 private:
  HDC context_;
  COLORREF text_;
  COLORREF background_;
};

}  // namespace

OwnerDrawMenu::OwnerDrawMenu() {
  const LOGFONTW font = MenuFont();
  normalFont_ = MakeFont(font, font.lfWeight);
  boldFont_ = MakeFont(font, FW_BOLD);
}

void OwnerDrawMenu::AppendSeparator() {
  MENUITEMINFOW item{};
  item.fMask = MIIM_FTYPE;
  item.fType = MFT_SEPARATOR;
  Insert(item);
}

void OwnerDrawMenu::Append(const std::wstring& text, WORD command, HICON icon,
                           OwnerDrawMenu& submenu) {
  MenuHandle itemMenu = std::move(submenu.menu_);
  std::wstring itemText = text;
  MENUITEMINFOW item{};
  item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_DATA | MIIM_STRING | MIIM_SUBMENU;
  item.fType = MFT_OWNERDRAW;
  item.wID = command;
  item.dwItemData = reinterpret_cast<ULONG_PTR>(icon);
  item.dwTypeData = itemText.data();
  item.hSubMenu = itemMenu.Get();
  if (Insert(item)) itemMenu.Release();
}

bool OwnerDrawMenu::Insert(MENUITEMINFOW item) {
  if (!menu_.IsValid()) menu_.Reset(::CreatePopupMenu());
  item.cbSize = sizeof(item);
  const auto end = static_cast<UINT>(::GetMenuItemCount(menu_.Get()));
  return ::InsertMenuItemW(menu_.Get(), end, TRUE, &item) != FALSE;
}

void OwnerDrawMenu::SetDefault(WORD command) {
  ::SetMenuDefaultItem(menu_.Get(), command, FALSE);
}

int OwnerDrawMenu::Track(StopRequest& stop) {
  POINT cursor{};
  if (!::GetCursorPos(&cursor)) return -1;
  if (Window() == nullptr && !Create()) return 0;
  // A menu whose window is in the background would not close when the user clicks elsewhere.
  ::SetForegroundWindow(Window());
  stop.SetMenuOwner(Window());
  const int command = TrackAt(cursor, stop);
  stop.SetMenuOwner(nullptr);
  return command;
}

int OwnerDrawMenu::TrackAt(POINT position, const StopRequest& stop) {
  if (stop.IsRaised()) return 0;
  const int command =
      ::TrackPopupMenuEx(menu_.Get(), TPM_RETURNCMD, position.x, position.y, Window(), nullptr);
  return stop.IsRaised() ? 0 : command;
}

LRESULT OwnerDrawMenu::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MEASUREITEM:
      MeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_DRAWITEM:
      DrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    default:
      return ::DefWindowProcW(window, message, wParam, lParam);
  }
}

std::wstring OwnerDrawMenu::TextOf(UINT command) const {
  MENUITEMINFOW item{};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_STRING;
  if (!::GetMenuItemInfoW(menu_.Get(), command, FALSE, &item)) return {};
  std::wstring text(item.cch + 1, L'\0');
  item.dwTypeData = text.data();
  item.cch = static_cast<UINT>(text.size());
  if (!::GetMenuItemInfoW(menu_.Get(), command, FALSE, &item)) return {};
  text.resize(item.cch);
  return text;
}

void OwnerDrawMenu::MeasureItem(MEASUREITEMSTRUCT& item) const {
  const std::wstring text = TextOf(item.itemID);
  SIZE size{};
  {
    const MemoryDcHandle context(::CreateCompatibleDC(nullptr));
    const SelectedObject font(context.Get(), normalFont_.Get());
    ::GetTextExtentPoint32W(context.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  }
  textHeight = size.cy;
  item.itemHeight = std::max(static_cast<UINT>(size.cy), kLeastHeight);
  item.itemWidth = static_cast<UINT>(size.cx) + kExtraWidth;
}

void OwnerDrawMenu::DrawItem(const DRAWITEMSTRUCT& item) const {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const COLORREF background = ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_MENU);
  const TextColours colours(
      item.hDC, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT), background);
  RECT area = item.rcItem;
  area.left += kIconColumnWidth;
  ::FillRect(item.hDC, &area, MakeBrush(background).Get());
  const auto icon = reinterpret_cast<HICON>(item.itemData);
  if (icon != nullptr) {
    ::DrawIconEx(item.hDC, item.rcItem.left + kIconMargin, item.rcItem.top + kIconMargin, icon,
                 kSmallIconEdge, kSmallIconEdge, 0, nullptr, DI_NORMAL);
  }
  DrawText(item);
}

void OwnerDrawMenu::DrawText(const DRAWITEMSTRUCT& item) const {
  const bool isDefault = (item.itemState & ODS_DEFAULT) != 0;
  const SelectedObject font(item.hDC, isDefault ? boldFont_.Get() : normalFont_.Get());
  const std::wstring text = TextOf(item.itemID);
  const int itemHeight = item.rcItem.bottom - item.rcItem.top;
  ::TextOutW(item.hDC, item.rcItem.left + kTextLeft,
             item.rcItem.top + (itemHeight - textHeight) / 2, text.c_str(),
             static_cast<int>(text.size()));
}

}  // namespace quillgate
