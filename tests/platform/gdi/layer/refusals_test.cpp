// Drawing functions that are given handles of nothing, or asked for what the layer does not draw.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/resource_fixture.h"
#include "platform/kit/failing_call.h"

namespace {

using Refusals = DrawingTest;

constexpr DWORD kHandle = ERROR_INVALID_HANDLE;
constexpr DWORD kParameter = ERROR_INVALID_PARAMETER;

// What a context would have drawn into or with.
RECT area{2, 3, 18, 17};
SIZE size{};
TEXTMETRICW metrics{};
wchar_t text[] = L"Text";

TEST_F(Refusals, HandlesOfNoContextFailWithInvalidHandle) {
  const auto white = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
  const HDC ended = ::CreateCompatibleDC(nullptr);
  ASSERT_TRUE(::DeleteDC(ended));
  for (const HDC none : {ended, reinterpret_cast<HDC>(white)}) {
    ExpectFailures({
        {"BitBlt", [&] { return ::BitBlt(page_, 0, 0, 1, 1, none, 0, 0, SRCCOPY); }, kHandle},
        {"CreateCompatibleBitmap", [&] { return ::CreateCompatibleBitmap(none, 1, 1); }, kHandle},
        {"CreateCompatibleDC", [&] { return ::CreateCompatibleDC(none); }, kHandle},
        {"DeleteDC", [&] { return ::DeleteDC(none); }, kHandle},
        {"DrawText", [&] { return ::DrawTextW(none, text, -1, &area, DT_LEFT); }, kHandle},
        {"FillRect", [&] { return ::FillRect(none, &area, white); }, kHandle},
        {"GetPixel", [&] { return ::GetPixel(none, 0, 0) != CLR_INVALID; }, kHandle},
        {"GetTextExtent", [&] { return ::GetTextExtentPoint32W(none, text, 4, &size); }, kHandle},
        {"GetTextMetrics", [&] { return ::GetTextMetricsW(none, &metrics); }, kHandle},
        {"Rectangle", [&] { return ::Rectangle(none, 0, 0, 4, 4); }, kHandle},
        {"SelectObject", [&] { return ::SelectObject(none, white); }, kHandle},
        {"SetBkMode", [&] { return ::SetBkMode(none, OPAQUE); }, kHandle},
        {"SetTextColor", [&] { return ::SetTextColor(none, 0) != CLR_INVALID; }, kHandle},
        {"TextOut", [&] { return ::TextOutW(none, 0, 0, text, 4); }, kHandle},
    });
  }
}

TEST_F(Refusals, ObjectsThatAreGoneOrOfAnotherKindFailWithInvalidHandle) {
  RegisterImageResources();
  const HBRUSH brush = ::CreateSolidBrush(0);
  ASSERT_TRUE(::DeleteObject(brush));
  const auto load = [] {
    return static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconPng),
                                           IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR));
  };
  const HICON icon = load();
  const HICON gone = load();
  ASSERT_TRUE(::DestroyIcon(gone));
  const auto window = reinterpret_cast<HWND>(LONG_PTR{0x7C});
  const auto draw = [&] { return ::DrawIconEx(page_, 0, 0, gone, 0, 0, 0, nullptr, DI_NORMAL); };
  ExpectFailures({
      {"DeleteObject of an icon", [&] { return ::DeleteObject(icon); }, kHandle},
      {"DeleteObject twice", [&] { return ::DeleteObject(brush); }, kHandle},
      {"DestroyIcon twice", [&] { return ::DestroyIcon(gone); }, ERROR_INVALID_CURSOR_HANDLE},
      {"DrawIconEx", draw, ERROR_INVALID_CURSOR_HANDLE},
      {"FillRect", [&] { return ::FillRect(page_, &area, brush); }, kHandle},
      {"GetDC", [&] { return ::GetDC(window); }, ERROR_INVALID_WINDOW_HANDLE},
      {"GetObject", [&] { return ::GetObjectW(brush, 0, nullptr); }, kHandle},
      {"SelectObject", [&] { return ::SelectObject(page_, brush); }, kHandle},
  });
  EXPECT_TRUE(::DestroyIcon(icon));
}

TEST_F(Refusals, TheScreenIsNeitherDrawnOnNorCopiedFrom) {
  const HDC screen = ::GetDC(nullptr);
  constexpr DWORD kNot = ERROR_NOT_SUPPORTED;
  ExpectFailures({
      {"BitBlt", [&] { return ::BitBlt(page_, 0, 0, 5, 5, screen, 0, 0, SRCCOPY); }, kNot},
      {"DrawText", [&] { return ::DrawTextW(screen, text, -1, &area, DT_LEFT); }, kNot},
      {"Rectangle", [&] { return ::Rectangle(screen, 0, 0, 4, 4); }, kNot},
      {"SelectObject", [&] { return ::SelectObject(screen, surface_.Bitmap()); }, kHandle},
      {"TextOut", [&] { return ::TextOutW(screen, 0, 0, text, 4); }, kNot},
  });
  EXPECT_EQ(::GetDeviceCaps(screen, LOGPIXELSX), 96);
  EXPECT_EQ(::GetDeviceCaps(screen, LOGPIXELSY), 96);
  ::ReleaseDC(nullptr, screen);
}

TEST_F(Refusals, UnknownStylesAndMissingDataFailWithInvalidParameter) {
  RegisterImageResources();
  const HICON icon = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconPng));
  constexpr int kDashed = 1;
  constexpr int kBlackness = 1;
  constexpr UINT kExpandTabs = 0x40;
  constexpr UINT kScroll = 3;
  constexpr UINT kRadio = 4;
  constexpr UINT kSoft = 0x1000;
  const LOGBRUSH hatched{2, 0, 0};
  DRAWTEXTPARAMS margins{sizeof margins, 0, 1, 1, 0};
  NONCLIENTMETRICSW tooSmall{};
  tooSmall.cbSize = 12;
  const auto drawText = [&](LPWSTR shown, int length, LPRECT place, UINT format,
                            LPDRAWTEXTPARAMS parameters) {
    return ::DrawTextExW(page_, shown, length, place, format, parameters);
  };
  const auto drawMask = [&] { return ::DrawIconEx(page_, 0, 0, icon, 0, 0, 0, nullptr, DI_MASK); };
  const auto readMetrics = [&] {
    return ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &tooSmall, 0);
  };
  ExpectFailures({
      {"hatched brush", [&] { return ::CreateBrushIndirect(&hatched); }, kParameter},
      {"dashed pen", [&] { return ::CreatePen(kDashed, 1, kRed); }, kParameter},
      {"operation", [&] { return ::SetROP2(page_, kBlackness); }, kParameter},
      {"mask of an icon", drawMask, kParameter},
      {"metrics' size", readMetrics, kParameter},
      {"metrics", [&] { return ::GetTextMetricsW(page_, nullptr); }, kParameter},
      {"tabs", [&] { return drawText(text, -1, &area, kExpandTabs, nullptr); }, kParameter},
      {"margins", [&] { return drawText(text, -1, &area, DT_LEFT, &margins); }, kParameter},
      {"length", [&] { return drawText(text, -2, &area, DT_LEFT, nullptr); }, kParameter},
      {"text", [&] { return drawText(nullptr, 3, &area, DT_LEFT, nullptr); }, kParameter},
      {"area", [&] { return drawText(text, -1, nullptr, DT_LEFT, nullptr); }, kParameter},
      {"edge", [&] { return ::DrawEdge(page_, &area, BDR_RAISEDOUTER, BF_RECT); }, kParameter},
      {"soft", [&] { return ::DrawEdge(page_, &area, EDGE_ETCHED, BF_RECT | kSoft); }, kParameter},
      {"edge's area", [&] { return ::DrawEdge(page_, nullptr, EDGE_ETCHED, 0); }, kParameter},
      {"scroll", [&] { return ::DrawFrameControl(page_, &area, kScroll, 0); }, kParameter},
      {"radio", [&] { return ::DrawFrameControl(page_, &area, DFC_BUTTON, kRadio); }, kParameter},
      {"box's area", [&] { return ::DrawFrameControl(page_, nullptr, DFC_BUTTON, 0); }, kParameter},
  });
  EXPECT_EQ(::SetROP2(page_, R2_NOT), R2_COPYPEN);
  EXPECT_EQ(surface_.Ink(), RECT{});
}

}  // namespace
