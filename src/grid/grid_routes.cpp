#include "grid/grid_routes.h"

#include <algorithm>
#include <array>
#include <functional>

#include "grid/grid_layout.h"
#include "grid/grid_messages.h"

namespace quillgate {
namespace {

// --- decoding of parameters ---

GridCell CellOf(const GridCall& call) {
  constexpr GridCell kNoCell = {kGridMaxRows + 1, kGridMaxCols + 1};
  const auto* cell = reinterpret_cast<const GridCell*>(call.wParam);
  return cell != nullptr ? *cell : kNoCell;
}

const wchar_t* TextOf(const GridCall& call) {
  const auto* text = reinterpret_cast<const wchar_t*>(call.lParam);
  return text != nullptr ? text : L"";
}

GridPoint PointOf(const GridCall& call) {
  return {static_cast<std::int16_t>(LOWORD(call.lParam)),
          static_cast<std::int16_t>(HIWORD(call.lParam))};
}

std::optional<GridScroll> ScrollOf(const GridCall& call) {
  switch (LOWORD(call.wParam)) {
    case SB_LINEUP:
      return GridScroll::kLineBack;
    case SB_LINEDOWN:
      return GridScroll::kLineOn;
    case SB_PAGEUP:
      return GridScroll::kPageBack;
    case SB_PAGEDOWN:
      return GridScroll::kPageOn;
    case SB_THUMBTRACK:
      return GridScroll::kThumb;
    default:
      return std::nullopt;
  }
}

bool FlagOf(const GridCall& call) {
  return call.wParam != 0;
}

std::int32_t NumberOf(WPARAM value) {
  return static_cast<std::int32_t>(value);
}

std::int32_t NumberOf(LPARAM value) {
  return static_cast<std::int32_t>(value);
}

// --- return values ---

constexpr LRESULT kPastLimits = -1;

template <class Value>
LRESULT ResultOf(const std::optional<Value>& value) {
  return value.has_value() ? static_cast<LRESULT>(*value) : kPastLimits;
}

LRESULT ResultOf(bool isWithinLimits) {
  return isWithinLimits ? 0 : kPastLimits;
}

// --- messages of the same kind ---

template <auto field>
LRESULT Read(const GridCall& call) {
  return call.slot.*field;
}

template <auto field>
LRESULT Store(const GridCall& call) {
  call.slot.*field = FlagOf(call);
  return 0;
}

template <auto field>
LRESULT SetFlag(const GridCall& call) {
  call.grid.SetFlag(field, FlagOf(call));
  return 0;
}

template <auto field>
LRESULT SetColour(const GridCall& call) {
  call.grid.SetColour(field, static_cast<GridColour>(call.wParam));
  return 0;
}

template <auto field>
LRESULT SetFont(const GridCall& call) {
  call.grid.SetFontOf(field, static_cast<GridFont>(call.wParam));
  return 0;
}

template <auto member>
LRESULT SetHeight(const GridCall& call) {
  std::invoke(member, call.grid, NumberOf(call.wParam));
  return 0;
}

template <auto member>
LRESULT Do(const GridCall& call) {
  std::invoke(member, call.grid);
  return 0;
}

template <auto member>
LRESULT PassPoint(const GridCall& call) {
  (call.grid.*member)(PointOf(call));
  return 0;
}

template <auto member>
LRESULT Scroll(const GridCall& call) {
  const auto request = ScrollOf(call);
  if (request.has_value()) (call.grid.*member)(*request, HIWORD(call.wParam));
  return 0;
}

// --- cells and sizes ---

LRESULT SetProtect(const GridCall& call) {
  return ResultOf(call.grid.SetProtect(CellOf(call), call.lParam != 0));
}

LRESULT SetDefaultProtect(const GridCall& call) {
  call.grid.SetDefaultProtect(FlagOf(call));
  return 0;
}

LRESULT SetCell(const GridCall& call) {
  return ResultOf(call.grid.SetCell(CellOf(call), TextOf(call)));
}

LRESULT GetCell(const GridCall& call) {
  const auto text = call.grid.CellText(CellOf(call));
  auto* buffer = reinterpret_cast<wchar_t*>(call.lParam);
  if (text.has_value() && buffer != nullptr) {
    std::copy(text->begin(), text->end(), buffer);
    buffer[text->size()] = L'\0';
  }
  return ResultOf(text.has_value());
}

LRESULT DeleteCell(const GridCall& call) {
  return ResultOf(call.grid.DeleteCell(CellOf(call)));
}

LRESULT GetCellType(const GridCall& call) {
  return ResultOf(call.grid.TypeNumber(CellOf(call)));
}

LRESULT GetProtect(const GridCall& call) {
  return ResultOf(call.grid.IsProtected(CellOf(call)));
}

LRESULT SetSize(const GridCall& call) {
  const auto rows = static_cast<std::uint32_t>(std::min<WPARAM>(call.wParam, kGridMaxRows));
  const auto cols = static_cast<std::int32_t>(std::clamp<LPARAM>(call.lParam, 1, kGridMaxCols));
  call.grid.SetSize(rows, cols);
  return 0;
}

LRESULT SetCursorPos(const GridCall& call) {
  call.grid.SetCursorPos(NumberOf(call.wParam), NumberOf(call.lParam));
  return 0;
}

LRESULT SetColWidth(const GridCall& call) {
  call.grid.SetColWidth(static_cast<std::uint32_t>(call.wParam), NumberOf(call.lParam));
  return 0;
}

LRESULT GetColWidth(const GridCall& call) {
  return WidthOf(call.slot, NumberOf(call.wParam));
}

LRESULT SetCursorColor(const GridCall& call) {
  call.grid.SetCursorColor(static_cast<GridColour>(call.wParam));
  return 0;
}

LRESULT SetGridLineColor(const GridCall& call) {
  call.grid.SetGridLineColor(static_cast<GridColour>(call.wParam));
  return 0;
}

LRESULT SetSpareFlag(const GridCall& call) {
  call.grid.SetSpareFlag(FlagOf(call));
  return 0;
}

// --- the window's own messages ---

// DefWindowProcW stores the text too, for WM_GETTEXT.
LRESULT SetText(const GridCall& call) {
  call.grid.SetTitle(TextOf(call));
  return ::DefWindowProcW(call.window, WM_SETTEXT, call.wParam, call.lParam);
}

LRESULT SetCellFont(const GridCall& call) {
  call.grid.SetFont(static_cast<GridFont>(call.wParam));
  return 0;
}

LRESULT Resize(const GridCall& call) {
  call.grid.OnSize({LOWORD(call.lParam), HIWORD(call.lParam)});
  return 0;
}

LRESULT Enable(const GridCall& call) {
  call.grid.OnEnabled(FlagOf(call));
  return 0;
}

// WM_PAINT paints the whole client area.
LRESULT EraseNothing(const GridCall&) {
  return 1;
}

LRESULT Paint(const GridCall& call) {
  const GridPainting painting(call.window, call.system);
  call.grid.Paint();
  return 0;
}

// Only WM_KEYDOWN counts: a dialog also sends WM_GETDLGCODE for the resulting WM_CHAR.
LRESULT DialogCode(const GridCall& call) {
  const auto* message = reinterpret_cast<const MSG*>(call.lParam);
  const bool isKey = message == nullptr || message->message == WM_KEYDOWN;
  return call.grid.DialogCode(isKey ? static_cast<int>(call.wParam) : 0);
}

LRESULT KeyDown(const GridCall& call) {
  call.grid.OnKey(static_cast<int>(call.wParam));
  return 0;
}

struct Entry {
  UINT message;
  GridRoute route;
};

constexpr Entry kEntries[] = {
    {WM_SETTEXT, SetText},
    {WM_SETFONT, SetCellFont},
    {WM_SIZE, Resize},
    {WM_SETFOCUS, Do<&Grid::OnFocusGained>},
    {WM_KILLFOCUS, Do<&Grid::OnFocusLost>},
    {WM_ENABLE, Enable},
    {WM_ERASEBKGND, EraseNothing},
    {WM_PAINT, Paint},
    {WM_GETDLGCODE, DialogCode},
    {WM_KEYDOWN, KeyDown},
    {WM_VSCROLL, Scroll<&Grid::OnVerticalScroll>},
    {WM_HSCROLL, Scroll<&Grid::OnHorizontalScroll>},
    {WM_MOUSEMOVE, PassPoint<&Grid::OnMouseMove>},
    {WM_LBUTTONDOWN, PassPoint<&Grid::OnButtonDown>},
    {WM_LBUTTONUP, PassPoint<&Grid::OnButtonUp>},
    {GCM_SETPROTECT, SetProtect},
    {GCM_SETDEFAULTPROTECT, SetDefaultProtect},
    {GCM_SETCELL, SetCell},
    {GCM_GETCELL, GetCell},
    {GCM_CLEAR, Do<&Grid::Clear>},
    {GCM_SETSIZE, SetSize},
    {GCM_DELETECELL, DeleteCell},
    {GCM_SETCURSORPOS, SetCursorPos},
    {GCM_SETAUTOROW, Store<&GridSlot::autoRow>},
    {GCM_GETGRAPHICINDEX, Read<&GridSlot::graphicIndex>},
    {GCM_SETCOLWIDTH, SetColWidth},
    {GCM_SETHEADERHEIGHT, SetHeight<&Grid::SetHeaderHeight>},
    {GCM_GETCELLTYPE, GetCellType},
    {GCM_GETPROTECT, GetProtect},
    {GCM_DRAWCURSOR, Do<&Grid::DrawCursor>},
    {GCM_SETROWHEIGHT, SetHeight<&Grid::SetRowHeight>},
    {GCM_SETCURSORCOLOR, SetCursorColor},
    {GCM_SETPROTECTCOLOR, SetColour<&GridSlot::protectColor>},
    {GCM_SETUNPROTECTCOLOR, SetColour<&GridSlot::unprotectColor>},
    {GCM_SETROWNUMBERS, SetFlag<&GridSlot::rowNumbers>},
    {GCM_SETCOLLETTERS, SetFlag<&GridSlot::colLetters>},
    {GCM_SETROWHIGHLIGHT, SetFlag<&GridSlot::rowHighlight>},
    {GCM_GETROWS, Read<&GridSlot::rows>},
    {GCM_GETCOLS, Read<&GridSlot::cols>},
    {GCM_NOTIFYROW, Do<&Grid::NotifyRow>},
    {GCM_NOTIFYCOL, Do<&Grid::NotifyCol>},
    {GCM_GETCURSORROW, Read<&GridSlot::cursorRow>},
    {GCM_GETCURSORCOL, Read<&GridSlot::cursorCol>},
    {GCM_REFRESH, Do<&Grid::Refresh>},
    {GCM_GETCOLWIDTH, GetColWidth},
    {GCM_GETROWHEIGHT, Read<&GridSlot::rowHeight>},
    {GCM_GETHEADERHEIGHT, Read<&GridSlot::headerHeight>},
    {GCM_SETTITLEHEIGHT, SetHeight<&Grid::SetTitleHeight>},
    {GCM_SETHIGHLIGHTCOLOR, SetColour<&GridSlot::highlightColor>},
    {GCM_SETHIGHLIGHTTEXTCOLOR, SetColour<&GridSlot::highlightTextColor>},
    {GCM_SETEDITABLE, Store<&GridSlot::editable>},
    {GCM_SETGRIDLINECOLOR, SetGridLineColor},
    {GCM_SETEXTENDLASTCOL, SetFlag<&GridSlot::extendLastCol>},
    {GCM_SETSPAREFLAG, SetSpareFlag},
    {GCM_SETELLIPSIS, SetFlag<&GridSlot::ellipsis>},
    {GCM_SETAUTOWIDTH, Store<&GridSlot::autoWidth>},
    {GCM_SETCOLRESIZE, Store<&GridSlot::colResize>},
    {GCM_SETTITLEFONT, SetFont<&GridSlot::titleFont>},
    {GCM_SETHEADINGFONT, SetFont<&GridSlot::headingFont>},
};

// One entry for each message number up to the last: cells are set and queried by the hundred
// thousand.
using Table = std::array<GridRoute, GCM_SETHEADINGFONT + 1>;

constexpr Table MakeTable() {
  Table table{};
  for (const Entry& entry : kEntries)
    table[entry.message] = entry.route;
  return table;
}

constexpr Table kRoutes = MakeTable();

}  // namespace

GridRoute RouteOf(UINT message) {
  return message < kRoutes.size() ? kRoutes[message] : nullptr;
}

}  // namespace quillgate
