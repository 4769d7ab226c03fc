#include "settings/hours_grid.h"

#include <array>
#include <cwchar>

#include "grid/grid_messages.h"
#include "grid/grid_window.h"

namespace quillgate {
namespace {

constexpr int kDays = 7;
constexpr int kHours = 24;
// In pixels of the client area of the dialog.
constexpr RECT kBounds{7, 7, 7 + 517, 7 + 155};
constexpr int kCellEdge = 19;
constexpr int kDayNameWidth = 60;
constexpr int kHeadingPoints = 8;
constexpr int kPointsPerInch = 72;

struct Setting {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
};
// Sent in this order.
constexpr std::array kSettings = {
    Setting{GCM_SETCOLRESIZE, FALSE, 0},
    Setting{GCM_SETGRIDLINECOLOR, RGB(0, 0, 0), 0},
    Setting{GCM_SETEDITABLE, FALSE, 0},
    Setting{GCM_SETROWHEIGHT, kCellEdge, 0},
    Setting{GCM_SETSIZE, kDays, kHours},
    Setting{GCM_SETTITLEHEIGHT, 0, 0},
    Setting{GCM_SETROWHIGHLIGHT, FALSE, 0},
    // The frame of the cursor is drawn with XOR: black makes it invisible.
    Setting{GCM_SETCURSORCOLOR, RGB(0, 0, 0), 0},
    Setting{GCM_SETCOLLETTERS, FALSE, 0},
    Setting{GCM_SETROWNUMBERS, FALSE, 0},
    Setting{GCM_SETEXTENDLASTCOL, FALSE, 0},
    Setting{GCM_SETSPAREFLAG, FALSE, 0},
    // Blocked hours are protected cells, allowed ones are not.
    Setting{GCM_SETPROTECTCOLOR, RGB(160, 0, 0), 0},
    Setting{GCM_SETUNPROTECTCOLOR, RGB(0, 160, 0), 0},
};

int ScreenPixelsPerInch() {
  const HDC context = ::GetDC(nullptr);
  const int pixels = ::GetDeviceCaps(context, LOGPIXELSY);
  ::ReleaseDC(nullptr, context);
  return pixels;
}

FontHandle MakeHeadingFont() {
  LOGFONTW font{};
  font.lfHeight = -::MulDiv(kHeadingPoints, ScreenPixelsPerInch(), kPointsPerInch);
  std::wcscpy(font.lfFaceName, L"Tahoma");
  return FontHandle(::CreateFontIndirectW(&font));
}

}  // namespace

void HoursGrid::Create(HWND dialog) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  RegisterGridClass(instance);
  window_ = ::CreateWindowExW(0, kGridClassName, L"Custom Grid Control", WS_CHILD | WS_VISIBLE,
                              kBounds.left, kBounds.top, kBounds.right - kBounds.left,
                              kBounds.bottom - kBounds.top, dialog,
                              reinterpret_cast<HMENU>(UINT_PTR{kHoursGridId}), instance, nullptr);
  if (window_ == nullptr) return;
  ApplySettings();
  SetHeadings();
}

void HoursGrid::ApplySettings() {
  for (const Setting& each : kSettings)
    Send(each.message, each.wParam, each.lParam);
}

void HoursGrid::SetHeadings() {
  headingFont_ = MakeHeadingFont();
  Send(GCM_SETHEADINGFONT, reinterpret_cast<WPARAM>(headingFont_.Get()));
  Send(GCM_SETCOLWIDTH, 0, kDayNameWidth);
  // One heading beyond the last column. Deliberate, see docs/behaviour.md.
  for (int col = 1; col <= kHours + 1; ++col)
    SetHourHeading(col);
}

void HoursGrid::SetHourHeading(int col) {
  std::array<wchar_t, 8> text{};
  std::swprintf(text.data(), text.size(), L"%02i", col - 1);
  Send(GCM_SETCOLWIDTH, static_cast<WPARAM>(col), kCellEdge);
  SetText({0, col}, text.data());
}

void HoursGrid::SetDayName(int row, const std::wstring& name) {
  SetText({row, 0}, name);
}

void HoursGrid::ShowHour(GridCell cell, bool blocked) {
  SendCell(GCM_SETPROTECT, cell, blocked);
}

void HoursGrid::Refresh() {
  Send(GCM_REFRESH, 0);
}

void HoursGrid::SetText(GridCell cell, const std::wstring& text) {
  SendCell(GCM_SETCELL, cell, reinterpret_cast<LPARAM>(text.c_str()));
}

void HoursGrid::Send(UINT message, WPARAM wParam, LPARAM lParam) {
  if (window_ != nullptr) ::SendMessageW(window_, message, wParam, lParam);
}

void HoursGrid::SendCell(UINT message, GridCell cell, LPARAM lParam) {
  Send(message, reinterpret_cast<WPARAM>(&cell), lParam);
}

}  // namespace quillgate
