#include "platform/dialog/wizard_frame.h"

#include <algorithm>

#include "platform/kernel/log.h"

namespace platform {
namespace {

// In dialog units.
constexpr int kTitleX = 14;
constexpr int kSubTitleX = 28;
constexpr int kTitleY = 6;
constexpr int kTitleHeight = 9;
constexpr int kLeastBand = 36;
// In pixels.
constexpr int kWatermarkWidth = 164;
constexpr int kBitmapMargin = 5;

OwnedFont FontOfWeight(int weight) {
  const LOGFONTW font = LogicalFontOf(DialogFont{8, weight, false, L"MS Shell Dlg"});
  return OwnedFont(::CreateFontIndirectW(&font));
}

LPCWSTR NameOf(const PROPSHEETHEADERW& header, DWORD flag) {
  if ((header.dwFlags & flag) == 0) return nullptr;
  return flag == PSH_WATERMARK ? header.pszbmWatermark : header.pszbmHeader;
}

SIZE SizeOf(HBITMAP bitmap) {
  BITMAP description{};
  if (bitmap != nullptr) ::GetObjectW(bitmap, sizeof description, &description);
  return {description.bmWidth, description.bmHeight};
}

void DrawBitmap(HDC context, HBITMAP bitmap, POINT position) {
  if (bitmap == nullptr) return;
  const SIZE size = SizeOf(bitmap);
  const HDC memory = ::CreateCompatibleDC(context);
  const HGDIOBJ before = ::SelectObject(memory, bitmap);
  ::BitBlt(context, position.x, position.y, size.cx, size.cy, memory, 0, 0, SRCCOPY);
  ::SelectObject(memory, before);
  ::DeleteDC(memory);
}

// Returns the height of the text; DT_CALCRECT only measures it.
int DrawIn(HDC context, HFONT font, const std::wstring& text, RECT bounds, UINT format) {
  const HGDIOBJ before = ::SelectObject(context, font);
  const int height = ::DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &bounds,
                                 format | DT_NOPREFIX);
  ::SelectObject(context, before);
  return height;
}

void DrawLine(HDC context, LONG width, LONG top) {
  RECT line = {0, top, width, top + 2};
  ::DrawEdge(context, &line, EDGE_ETCHED, BF_TOP);
}

}  // namespace

WizardFrame::WizardFrame(const PROPSHEETHEADERW& header)
    : instance_(header.hInstance),
      watermarkName_(NameOf(header, PSH_WATERMARK)),
      bitmap_(Load(NameOf(header, PSH_HEADER), {})),
      bitmapSize_(SizeOf(bitmap_.get())),
      titleFont_(FontOfWeight(FW_BOLD)),
      textFont_(FontOfWeight(FW_NORMAL)) {}

OwnedBitmap WizardFrame::Load(LPCWSTR name, SIZE size) const {
  if (name == nullptr) return nullptr;
  const auto loaded =
      static_cast<HBITMAP>(::LoadImageW(instance_, name, IMAGE_BITMAP, static_cast<int>(size.cx),
                                        static_cast<int>(size.cy), LR_DEFAULTCOLOR));
  if (loaded == nullptr) LogLine("wizard: a picture cannot be loaded");
  return OwnedBitmap(loaded);
}

void WizardFrame::LayOut(HWND sheet, SIZE inner, SIZE outer, std::span<const HeaderText> headers,
                         const DialogUnits& units) {
  units_ = units;
  const int width = WizardWidth(inner, outer, units);
  layout_ = LayOutWizard(inner, outer, BandHeight(sheet, width, headers), units);
  watermark_ = Load(watermarkName_, {kWatermarkWidth, layout_.outer.bottom});
}

LONG WizardFrame::TextEnd(LONG width) const {
  return width - bitmapSize_.cx - 2 * kBitmapMargin;
}

int WizardFrame::BandHeight(HWND sheet, int width, std::span<const HeaderText> headers) const {
  int height = std::max(units_.Y(kLeastBand), static_cast<int>(bitmapSize_.cy) + 2 * kBitmapMargin);
  const HDC context = ::GetDC(sheet);
  const RECT bounds = {units_.X(kSubTitleX), 0, TextEnd(width), 0};
  for (const HeaderText& header : headers) {
    const int text =
        DrawIn(context, textFont_.get(), header.subTitle, bounds, DT_WORDBREAK | DT_CALCRECT);
    height = std::max(height, units_.Y(2 * kTitleY + kTitleHeight) + text);
  }
  ::ReleaseDC(sheet, context);
  return height;
}

void WizardFrame::PaintBand(HDC context, const HeaderText& header) const {
  const RECT& band = layout_.band;
  ::FillRect(context, &band, ::GetSysColorBrush(COLOR_WINDOW));
  DrawLine(context, band.right, band.bottom);
  const LONG bitmapTop = (band.bottom - bitmapSize_.cy) / 2;
  DrawBitmap(context, bitmap_.get(), {band.right - bitmapSize_.cx - kBitmapMargin, bitmapTop});
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextColor(context, ::GetSysColor(COLOR_WINDOWTEXT));
  const LONG end = TextEnd(band.right);
  const LONG subTitleTop = units_.Y(kTitleY + kTitleHeight);
  DrawIn(context, titleFont_.get(), header.title,
         {units_.X(kTitleX), units_.Y(kTitleY), end, subTitleTop}, DT_SINGLELINE | DT_END_ELLIPSIS);
  DrawIn(context, textFont_.get(), header.subTitle,
         {units_.X(kSubTitleX), subTitleTop, end, band.bottom}, DT_WORDBREAK);
}

void WizardFrame::PaintLineAboveButtons(HDC context) const {
  DrawLine(context, layout_.sheet.cx, layout_.outer.bottom);
}

void WizardFrame::PaintOuterPage(HDC context) const {
  ::FillRect(context, &layout_.outer, ::GetSysColorBrush(COLOR_WINDOW));
  DrawBitmap(context, watermark_.get(), {0, 0});
}

}  // namespace platform
