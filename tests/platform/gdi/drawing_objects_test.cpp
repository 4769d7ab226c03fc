// Fonts, pens, brushes and bitmaps: how they are described, selected and deleted.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "platform/gdi/drawing_surface.h"

namespace {

using DrawingObjects = DrawingTest;

TEST_F(DrawingObjects, ObjectsAreDescribedAsTheyWereMade) {
  const HFONT font = NewFont(L"Tahoma", -37, FW_BOLD);
  const auto face = DescriptionOf<LOGFONTW>(font);
  EXPECT_EQ(face.lfHeight, -37);
  EXPECT_EQ(face.lfWeight, FW_BOLD);
  EXPECT_STREQ(face.lfFaceName, L"Tahoma");

  const HPEN pen = ::CreatePen(PS_SOLID, 3, RGB(1, 2, 3));
  const auto line = DescriptionOf<LOGPEN>(pen);
  EXPECT_EQ(line.lopnStyle, static_cast<UINT>(PS_SOLID));
  EXPECT_EQ(line.lopnWidth.x, 3);
  EXPECT_EQ(line.lopnColor, RGB(1, 2, 3));

  const LOGBRUSH wanted{BS_SOLID, RGB(1, 2, 3), 0};
  const HBRUSH brush = ::CreateBrushIndirect(&wanted);
  const auto filling = DescriptionOf<LOGBRUSH>(brush);
  EXPECT_EQ(filling.lbStyle, static_cast<UINT>(BS_SOLID));
  EXPECT_EQ(filling.lbColor, RGB(1, 2, 3));

  for (const HGDIOBJ object : {HGDIOBJ{font}, HGDIOBJ{pen}, HGDIOBJ{brush}}) {
    EXPECT_TRUE(::DeleteObject(object));
    EXPECT_FALSE(::DeleteObject(object)) << "it is deleted already";
  }
}

TEST_F(DrawingObjects, AFontMadeOfSingleFieldsHasThem) {
  const HFONT font = ::CreateFontW(16, 0, 0, 0, FW_THIN, 1, 0, 1, ANSI_CHARSET, 0, 0, PROOF_QUALITY,
                                   VARIABLE_PITCH | FF_SWISS, L"Tahoma");
  const auto description = DescriptionOf<LOGFONTW>(font);
  EXPECT_EQ(description.lfHeight, 16);
  EXPECT_EQ(description.lfWeight, FW_THIN);
  EXPECT_EQ(description.lfItalic, 1);
  EXPECT_EQ(description.lfUnderline, 0);
  EXPECT_EQ(description.lfStrikeOut, 1);
  EXPECT_EQ(description.lfQuality, PROOF_QUALITY);
  EXPECT_EQ(description.lfPitchAndFamily, VARIABLE_PITCH | FF_SWISS);
  EXPECT_STREQ(description.lfFaceName, L"Tahoma");
  EXPECT_TRUE(::DeleteObject(font));
  const std::wstring tooLong(LF_FACESIZE, L'x');
  EXPECT_EQ(::CreateFontW(16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, tooLong.c_str()), nullptr);
}

TEST_F(DrawingObjects, StockObjectsSurviveDeletion) {
  for (const int index : {WHITE_BRUSH, GRAY_BRUSH, NULL_BRUSH, SYSTEM_FONT, DEFAULT_GUI_FONT}) {
    const HGDIOBJ object = ::GetStockObject(index);
    EXPECT_TRUE(::DeleteObject(object));
    EXPECT_GT(::GetObjectW(object, 0, nullptr), 0) << index;
    EXPECT_EQ(::GetStockObject(index), object);
  }
  EXPECT_EQ(DescriptionOf<LOGBRUSH>(::GetStockObject(GRAY_BRUSH)).lbColor, RGB(128, 128, 128));
  EXPECT_EQ(DescriptionOf<LOGPEN>(::GetStockObject(NULL_PEN)).lopnStyle,
            static_cast<UINT>(PS_NULL));
  EXPECT_EQ(DescriptionOf<LOGPEN>(::GetStockObject(WHITE_PEN)).lopnColor, kWhite);
  EXPECT_EQ(::GetStockObject(99), nullptr);
}

TEST_F(DrawingObjects, NumbersBeyondTheColoursOfTheSystemHaveNone) {
  EXPECT_EQ(::GetSysColor(-1), 0u);
  EXPECT_EQ(::GetSysColor(1'000), 0u);
  EXPECT_EQ(::GetSysColorBrush(1'000), nullptr);
}

TEST_F(DrawingObjects, ABitmapIsSelectedInOneContextAtATime) {
  const HDC other = ::CreateCompatibleDC(page_);
  EXPECT_EQ(::SelectObject(other, surface_.Bitmap()), nullptr);
  EXPECT_FALSE(::DeleteObject(surface_.Bitmap()));
  EXPECT_TRUE(::DeleteDC(other));
}

TEST_F(DrawingObjects, ASelectedObjectIsNotDeletedUntilItsContextIsGone) {
  const HDC context = ::CreateCompatibleDC(nullptr);
  const HFONT font = NewFont(L"", -20);
  const HBRUSH brush = ::CreateSolidBrush(kRed);
  const HGDIOBJ fontBefore = ::SelectObject(context, font);
  EXPECT_EQ(fontBefore, ::GetStockObject(SYSTEM_FONT));
  EXPECT_EQ(::SelectObject(context, brush), ::GetStockObject(WHITE_BRUSH));
  EXPECT_FALSE(::DeleteObject(font));
  EXPECT_FALSE(::DeleteObject(brush));
  EXPECT_EQ(::SelectObject(context, fontBefore), font);
  EXPECT_TRUE(::DeleteObject(font));
  EXPECT_TRUE(::DeleteDC(context));
  EXPECT_TRUE(::DeleteObject(brush));
}

TEST_F(DrawingObjects, MetricsAreWrittenWithinTheSizeGiven) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = offsetof(NONCLIENTMETRICSW, iPaddedBorderWidth);
  metrics.iPaddedBorderWidth = -1;
  EXPECT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0));
  EXPECT_EQ(metrics.iPaddedBorderWidth, -1) << "written past the older structure";
  EXPECT_LT(metrics.lfMenuFont.lfHeight, 0);
  metrics.cbSize = sizeof metrics;
  EXPECT_TRUE(::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0));
  EXPECT_GE(metrics.iPaddedBorderWidth, 0);
}

}  // namespace
