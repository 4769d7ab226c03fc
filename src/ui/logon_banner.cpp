#include "ui/logon_banner.h"

#include "resources/resource.h"

namespace quillgate {
namespace {

constexpr int kTextX = 160;
constexpr int kTextY = 12;

BannerFont LogonFont() {
  BannerFont font;
  font.face = L"Tahoma";
  font.points = 28;
  font.bold = true;
  font.shadowColour = RGB(30, 30, 30);
  font.textColour = RGB(255, 255, 255);
  return font;
}

}  // namespace

LogonBanner::LogonBanner(const GdiPlus& gdiPlus) : drawer_(gdiPlus, LogonFont()) {}

void LogonBanner::Paint(HDC context, int dialogWidth, const std::wstring& text) {
  if (!composed_.IsValid()) Compose(context, text);
  if (!composed_.IsValid()) return;
  ::BitBlt(context, 0, 0, kWidth, kHeight, composed_.Get(), 0, 0, SRCCOPY);
  for (int x = kWidth; x < dialogWidth; ++x)
    ::BitBlt(context, x, 0, 1, kHeight, composed_.Get(), kWidth - 1, 0, SRCCOPY);
}

void LogonBanner::Compose(HDC reference, const std::wstring& text) {
  bitmap_.Reset(static_cast<HBITMAP>(::LoadImageW(::GetModuleHandleW(nullptr),
                                                  MAKEINTRESOURCEW(IDB_LOGON_BANNER), IMAGE_BITMAP,
                                                  0, 0, LR_DEFAULTCOLOR)));
  if (!bitmap_.IsValid()) return;
  composed_.Reset(::CreateCompatibleDC(reference));
  if (!composed_.IsValid()) return;
  ::SelectObject(composed_.Get(), bitmap_.Get());
  drawer_.Draw(composed_.Get(), kTextX, kTextY, text);
}

}  // namespace quillgate
