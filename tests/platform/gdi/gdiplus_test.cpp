// GDI+'s text functions, taken from the module as a program does.
#include <windows.h>

#include <gdiplus.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/font_handle.h"

namespace {

using namespace Gdiplus;

// Started for the time of a test.
class Session {
 public:
  Session() {
    const GdiplusStartupInput input;
    EXPECT_EQ(GdiplusStartup(&token_, &input, nullptr), Ok);
  }
  ~Session() { GdiplusShutdown(token_); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

// A font of that many points and a black brush on a context.
class Text {
 public:
  Text(HDC context, REAL points, const wchar_t* face = L"Tahoma") {
    EXPECT_EQ(DllExports::GdipCreateFromHDC(context, &graphics_), Ok);
    EXPECT_EQ(DllExports::GdipSetTextRenderingHint(graphics_, TextRenderingHintAntiAlias), Ok);
    EXPECT_EQ(DllExports::GdipCreateFontFamilyFromName(face, nullptr, &family_), Ok);
    EXPECT_EQ(DllExports::GdipCreateFont(family_, points, FontStyleBold, UnitPoint, &font_), Ok);
    EXPECT_EQ(DllExports::GdipCreateSolidFill(0xFF000000, &brush_), Ok);
  }
  ~Text() {
    EXPECT_EQ(DllExports::GdipDeleteBrush(brush_), Ok);
    EXPECT_EQ(DllExports::GdipDeleteFont(font_), Ok);
    EXPECT_EQ(DllExports::GdipDeleteFontFamily(family_), Ok);
    EXPECT_EQ(DllExports::GdipDeleteGraphics(graphics_), Ok);
  }
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;

  Status Draw(const wchar_t* text, REAL x, REAL y) const {
    const RectF origin(x, y, 0, 0);
    return DllExports::GdipDrawString(graphics_, text, -1, font_, &origin, nullptr, brush_);
  }
  GpGraphics* Graphics() const { return graphics_; }
  GpFont* Font() const { return font_; }
  GpFontFamily* Family() const { return family_; }
  GpSolidFill* Brush() const { return brush_; }

 private:
  GpGraphics* graphics_ = nullptr;
  GpFontFamily* family_ = nullptr;
  GpFont* font_ = nullptr;
  GpSolidFill* brush_ = nullptr;
};

TEST(Gdiplus, ItsModuleHasEveryFunction) {
  WithoutDesktop([] {
    const HMODULE module = ::LoadLibraryW(L"gdiplus.dll");
    ASSERT_NE(module, nullptr);
    for (const char* name :
         {"GdiplusStartup", "GdiplusShutdown", "GdipCreateFromHDC", "GdipDeleteGraphics",
          "GdipSetTextRenderingHint", "GdipCreateFontFamilyFromName", "GdipDeleteFontFamily",
          "GdipCreateFont", "GdipDeleteFont", "GdipCreateSolidFill", "GdipDeleteBrush",
          "GdipDrawString"}) {
      EXPECT_NE(::GetProcAddress(module, name), nullptr) << name;
    }
    const auto create = reinterpret_cast<decltype(&DllExports::GdipCreateSolidFill)>(
        ::GetProcAddress(module, "GdipCreateSolidFill"));
    const Session session;
    GpSolidFill* brush = nullptr;
    EXPECT_EQ(create(0xFF102030, &brush), Ok);
    EXPECT_EQ(DllExports::GdipDeleteBrush(brush), Ok);
    EXPECT_TRUE(::FreeLibrary(module));
  });
}

TEST(Gdiplus, NothingWorksBeforeItIsStarted) {
  WithoutDesktop([] {
    GpSolidFill* brush = nullptr;
    GpFontFamily* family = nullptr;
    EXPECT_EQ(DllExports::GdipCreateSolidFill(0xFF000000, &brush), GdiplusNotInitialized);
    EXPECT_EQ(DllExports::GdipCreateFontFamilyFromName(L"Tahoma", nullptr, &family),
              GdiplusNotInitialized);
    EXPECT_EQ(DllExports::GdipDeleteBrush(brush), GdiplusNotInitialized);
    ULONG_PTR token = 0;
    GdiplusStartupInput input;
    EXPECT_EQ(GdiplusStartup(nullptr, &input, nullptr), InvalidParameter);
    EXPECT_EQ(GdiplusStartup(&token, nullptr, nullptr), InvalidParameter);
    input.SuppressBackgroundThread = TRUE;
    EXPECT_EQ(GdiplusStartup(&token, &input, nullptr), InvalidParameter);
    input = GdiplusStartupInput();
    input.GdiplusVersion = 7;
    EXPECT_EQ(GdiplusStartup(&token, &input, nullptr), UnsupportedGdiplusVersion);
  });
}

TEST(Gdiplus, ItRunsUntilItsLastShutdown) {
  WithoutDesktop([] {
    GpSolidFill* brush = nullptr;
    {
      const Session outer;
      { const Session inner; }
      EXPECT_EQ(DllExports::GdipCreateSolidFill(0xFF000000, &brush), Ok);
      EXPECT_EQ(DllExports::GdipDeleteBrush(brush), Ok);
    }
    EXPECT_EQ(DllExports::GdipCreateSolidFill(0xFF000000, &brush), GdiplusNotInitialized);
  });
}

TEST(Gdiplus, WhatIsWrongIsNamed) {
  OnDesktop([] {
    const Session session;
    const DrawingSurface surface(10, 10);
    const Text text(surface.Get(), 10);
    GpGraphics* graphics = nullptr;
    GpFontFamily* family = nullptr;
    GpFont* font = nullptr;
    GpSolidFill* brush = nullptr;
    EXPECT_EQ(DllExports::GdipCreateFromHDC(nullptr, &graphics), OutOfMemory);
    EXPECT_EQ(DllExports::GdipCreateFontFamilyFromName(L"No Such Face", nullptr, &family),
              FontFamilyNotFound);
    EXPECT_EQ(DllExports::GdipCreateFontFamilyFromName(nullptr, nullptr, &family),
              InvalidParameter);
    EXPECT_EQ(DllExports::GdipCreateFont(text.Family(), 0, 0, UnitPoint, &font), InvalidParameter);
    EXPECT_EQ(DllExports::GdipCreateFont(text.Family(), 8, 0, UnitDisplay, &font),
              InvalidParameter);
    EXPECT_EQ(DllExports::GdipCreateSolidFill(0x80000000, &brush), NotImplemented);
    EXPECT_EQ(DllExports::GdipSetTextRenderingHint(text.Graphics(), TextRenderingHint(6)),
              InvalidParameter);
    const RectF origin;
    const RectF box(0, 0, 5, 5);
    EXPECT_EQ(DllExports::GdipDrawString(text.Graphics(), L"x", -1, text.Font(), nullptr, nullptr,
                                         text.Brush()),
              InvalidParameter);
    EXPECT_EQ(DllExports::GdipDrawString(text.Graphics(), L"x", -1, nullptr, &origin, nullptr,
                                         text.Brush()),
              InvalidParameter);
    EXPECT_EQ(DllExports::GdipDrawString(text.Graphics(), L"x", -1, text.Font(), &box, nullptr,
                                         text.Brush()),
              NotImplemented);
    EXPECT_FALSE(surface.Ink().has_value());
  });
}

TEST(Gdiplus, GraphicsOfAnEndedContextDrawNothing) {
  OnDesktop([] {
    const Session session;
    const HDC context = ::CreateCompatibleDC(nullptr);
    const Text text(context, 10);
    ::DeleteDC(context);
    EXPECT_EQ(text.Draw(L"x", 0, 0), Win32Error);
  });
}

// A banner's text of 28 points, with its shadow.
TEST(Gdiplus, TextStartsASixthOfItsSizeAfterItsPlace) {
  OnDesktop([] {
    const Session session;
    const DrawingSurface surface(367, 74);
    const Text text(surface.Get(), 28);
    ASSERT_EQ(text.Draw(L"Hill", 160, 12), Ok);
    const RECT plain = *surface.Ink();
    surface.Clear();
    ASSERT_EQ(text.Draw(L"Hill", 170, 20), Ok);
    const RECT moved = *surface.Ink();
    EXPECT_EQ(moved.left - plain.left, 10);
    EXPECT_EQ(moved.top - plain.top, 8);
    // 28 points are 37 pixels.
    EXPECT_GE(plain.left, 160 + 6);
    EXPECT_LE(plain.left, 160 + 6 + 6);
    EXPECT_GE(plain.top, 12 + 4);
    EXPECT_LE(plain.bottom, 12 + 45);
    EXPECT_NEAR(plain.bottom - plain.top, 37 * 3 / 4, 3);
  });
}

TEST(Gdiplus, AShadowLiesTwoAndAHalfPixelsAway) {
  OnDesktop([] {
    const Session session;
    const DrawingSurface surface(367, 74);
    const Text text(surface.Get(), 28);
    text.Draw(L"Hill", 160, 12);
    const RECT plain = *surface.Ink();
    surface.Clear();
    text.Draw(L"Hill", 162.5F, 14.5F);
    const RECT shadow = *surface.Ink();
    EXPECT_NEAR(shadow.left - plain.left, 2.5, 1);
    EXPECT_NEAR(shadow.top - plain.top, 2.5, 1);
  });
}

TEST(Gdiplus, OrdinaryTextLandsWhereItsTextDoes) {
  OnDesktop([] {
    const Session session;
    const DrawingSurface surface(367, 74);
    const Text text(surface.Get(), 28);
    text.Draw(L"Hill", 160, 12);
    const RECT plus = *surface.Ink();
    surface.Clear();
    const FontHandle font(L"Tahoma", -37, FW_BOLD);
    const HGDIOBJ before = ::SelectObject(surface.Get(), font.Get());
    ::SetBkMode(surface.Get(), TRANSPARENT);
    ::TextOutW(surface.Get(), 160 + 6, 12, L"Hill", 4);
    const RECT ordinary = *surface.Ink();
    ::SelectObject(surface.Get(), before);
    EXPECT_NEAR(plus.left, ordinary.left, 1);
    EXPECT_NEAR(plus.right, ordinary.right, 1);
    EXPECT_EQ(plus.top, ordinary.top);
    EXPECT_EQ(plus.bottom, ordinary.bottom);
  });
}

}  // namespace
