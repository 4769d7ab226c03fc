// Fonts, brushes and colours on a machine without a desktop.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/font_handle.h"

namespace {

TEST(DrawingObjects, FontsAreDescribedAsTheyWereMade) {
  WithoutDesktop([] {
    const FontHandle font(L"Tahoma", -37, FW_BOLD);
    LOGFONTW description{};
    EXPECT_EQ(::GetObjectW(font.Get(), 0, nullptr), static_cast<int>(sizeof description));
    EXPECT_EQ(::GetObjectW(font.Get(), sizeof description, &description),
              static_cast<int>(sizeof description));
    EXPECT_EQ(description.lfHeight, -37);
    EXPECT_EQ(description.lfWeight, FW_BOLD);
    EXPECT_EQ(std::wstring(description.lfFaceName), L"Tahoma");
  });
}

TEST(DrawingObjects, BrushesAreDescribedAsTheyWereMade) {
  WithoutDesktop([] {
    const LOGBRUSH wanted{BS_SOLID, RGB(1, 2, 3), 0};
    const HBRUSH brush = ::CreateBrushIndirect(&wanted);
    LOGBRUSH description{};
    EXPECT_EQ(::GetObjectW(brush, sizeof description, &description),
              static_cast<int>(sizeof description));
    EXPECT_EQ(description.lbStyle, static_cast<UINT>(BS_SOLID));
    EXPECT_EQ(description.lbColor, RGB(1, 2, 3));
    EXPECT_TRUE(::DeleteObject(brush));
    constexpr UINT kHatched = 2;
    const LOGBRUSH hatched{kHatched, 0, 0};
    EXPECT_EQ(::CreateBrushIndirect(&hatched), nullptr);
  });
}

TEST(DrawingObjects, PensAreDescribedAsTheyWereMade) {
  WithoutDesktop([] {
    const HPEN pen = ::CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
    LOGPEN description{};
    EXPECT_EQ(::GetObjectW(pen, sizeof description, &description),
              static_cast<int>(sizeof description));
    EXPECT_EQ(description.lopnStyle, static_cast<UINT>(PS_SOLID));
    EXPECT_EQ(description.lopnWidth.x, 3);
    EXPECT_EQ(description.lopnColor, RGB(1, 2, 3));
    EXPECT_TRUE(::DeleteObject(pen));
    EXPECT_FALSE(::DeleteObject(pen));
    ::GetObjectW(::GetStockObject(NULL_PEN), sizeof description, &description);
    EXPECT_EQ(description.lopnStyle, static_cast<UINT>(PS_NULL));
    ::GetObjectW(::GetStockObject(WHITE_PEN), sizeof description, &description);
    EXPECT_EQ(description.lopnColor, RGB(255, 255, 255));
  });
}

TEST(DrawingObjects, AFontMadeOfSingleFieldsHasThem) {
  WithoutDesktop([] {
    const HFONT font = ::CreateFontW(16, 0, 0, 0, FW_THIN, 1, 0, 1, ANSI_CHARSET, 0, 0,
                                     PROOF_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Tahoma");
    LOGFONTW description{};
    ::GetObjectW(font, sizeof description, &description);
    EXPECT_EQ(description.lfHeight, 16);
    EXPECT_EQ(description.lfWeight, FW_THIN);
    EXPECT_EQ(description.lfItalic, 1);
    EXPECT_EQ(description.lfUnderline, 0);
    EXPECT_EQ(description.lfStrikeOut, 1);
    EXPECT_EQ(description.lfQuality, PROOF_QUALITY);
    EXPECT_EQ(description.lfPitchAndFamily, VARIABLE_PITCH | FF_SWISS);
    EXPECT_EQ(std::wstring(description.lfFaceName), L"Tahoma");
    EXPECT_TRUE(::DeleteObject(font));
    const std::wstring tooLong(LF_FACESIZE, L'x');
    EXPECT_EQ(::CreateFontW(16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, tooLong.c_str()), nullptr);
  });
}

TEST(DrawingObjects, AnObjectIsDeletedOnce) {
  WithoutDesktop([] {
    const HBRUSH brush = ::CreateSolidBrush(0);
    EXPECT_TRUE(::DeleteObject(brush));
    EXPECT_FALSE(::DeleteObject(brush));
    EXPECT_EQ(::GetObjectW(brush, 0, nullptr), 0);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
  });
}

TEST(DrawingObjects, ThoseOfTheSystemSurviveDeletion) {
  WithoutDesktop([] {
    for (const int index : {WHITE_BRUSH, GRAY_BRUSH, NULL_BRUSH, SYSTEM_FONT, DEFAULT_GUI_FONT}) {
      const HGDIOBJ object = ::GetStockObject(index);
      EXPECT_TRUE(::DeleteObject(object));
      EXPECT_GT(::GetObjectW(object, 0, nullptr), 0) << index;
      EXPECT_EQ(::GetStockObject(index), object);
    }
    LOGBRUSH grey{};
    ::GetObjectW(::GetStockObject(GRAY_BRUSH), sizeof grey, &grey);
    EXPECT_EQ(grey.lbColor, RGB(128, 128, 128));
    EXPECT_EQ(::GetStockObject(99), nullptr);
  });
}

TEST(DrawingObjects, WithoutADesktopThereAreNoContexts) {
  WithoutDesktop([] {
    EXPECT_EQ(::GetDC(nullptr), nullptr);
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::CreateCompatibleDC(nullptr), nullptr);
    EXPECT_EQ(::GetLastError(), ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  });
}

TEST(DrawingObjects, WithoutADesktopColoursAreWindowsOwn) {
  WithoutDesktop([] {
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
    EXPECT_EQ(::GetSysColor(COLOR_MENUTEXT), RGB(0, 0, 0));
    EXPECT_EQ(::GetSysColor(-1), 0u);
    EXPECT_EQ(::GetSysColor(1'000), 0u);
    EXPECT_EQ(::GetSysColorBrush(1'000), nullptr);
  });
}

TEST(DrawingObjects, MetricsAreGivenInBothTheirSizes) {
  WithoutDesktop([] {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
    metrics.iPaddedBorderWidth = -1;
    EXPECT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0));
    EXPECT_EQ(metrics.iPaddedBorderWidth, -1) << "written past the older structure";
    EXPECT_LT(metrics.lfMenuFont.lfHeight, 0);
    metrics.cbSize = sizeof metrics;
    EXPECT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
    EXPECT_GE(metrics.iPaddedBorderWidth, 0);
    metrics.cbSize = 12;
    EXPECT_FALSE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  });
}

}  // namespace
