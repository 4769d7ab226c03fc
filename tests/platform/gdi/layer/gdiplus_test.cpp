// GDI+'s text functions, linked and taken from their module.
#include <windows.h>

#include <gdiplus.h>
#include <gtest/gtest.h>

#include "platform/gdi/drawing_surface.h"

namespace {

using namespace Gdiplus;
using namespace Gdiplus::DllExports;

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
class PlacedText {
 public:
  PlacedText(HDC context, REAL points) {
    EXPECT_EQ(GdipCreateFromHDC(context, &graphics), Ok);
    EXPECT_EQ(GdipSetTextRenderingHint(graphics, TextRenderingHintAntiAlias), Ok);
    EXPECT_EQ(GdipCreateFontFamilyFromName(L"Tahoma", nullptr, &family), Ok);
    EXPECT_EQ(GdipCreateFont(family, points, FontStyleBold, UnitPoint, &font), Ok);
    EXPECT_EQ(GdipCreateSolidFill(0xFF000000, &brush), Ok);
  }
  ~PlacedText() {
    EXPECT_EQ(GdipDeleteBrush(brush), Ok);
    EXPECT_EQ(GdipDeleteFont(font), Ok);
    EXPECT_EQ(GdipDeleteFontFamily(family), Ok);
    EXPECT_EQ(GdipDeleteGraphics(graphics), Ok);
  }
  PlacedText(const PlacedText&) = delete;
  PlacedText& operator=(const PlacedText&) = delete;

  Status Draw(const wchar_t* text, const RectF& layout) const {
    return GdipDrawString(graphics, text, -1, font, &layout, nullptr, brush);
  }

  GpGraphics* graphics = nullptr;
  GpFontFamily* family = nullptr;
  GpFont* font = nullptr;
  GpSolidFill* brush = nullptr;
};

TEST(Gdiplus, FunctionsFailBeforeTheFirstStartupAndAfterTheLastShutdown) {
  GpSolidFill* brush = nullptr;
  GpFontFamily* family = nullptr;
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(GdipCreateSolidFill(0xFF000000, &brush), GdiplusNotInitialized);
    EXPECT_EQ(GdipCreateFontFamilyFromName(L"Tahoma", nullptr, &family), GdiplusNotInitialized);
    EXPECT_EQ(GdipDeleteBrush(brush), GdiplusNotInitialized);
    const Session outer;
    { const Session inner; }
    EXPECT_EQ(GdipCreateSolidFill(0xFF000000, &brush), Ok);
    EXPECT_EQ(GdipDeleteBrush(brush), Ok);
  }
}

TEST(Gdiplus, StartupsOfOtherVersionsOrWithoutATokenFail) {
  ULONG_PTR token = 0;
  GdiplusStartupInput input;
  EXPECT_EQ(GdiplusStartup(nullptr, &input, nullptr), InvalidParameter);
  EXPECT_EQ(GdiplusStartup(&token, nullptr, nullptr), InvalidParameter);
  input.SuppressBackgroundThread = TRUE;
  EXPECT_EQ(GdiplusStartup(&token, &input, nullptr), InvalidParameter) << "no room for the hooks";
  input = GdiplusStartupInput();
  input.GdiplusVersion = 7;
  EXPECT_EQ(GdiplusStartup(&token, &input, nullptr), UnsupportedGdiplusVersion);
}

TEST(Gdiplus, TheModuleExportsEveryFunction) {
  const HMODULE module = ::LoadLibraryW(L"gdiplus.dll");
  ASSERT_NE(module, nullptr);
  for (const char* name :
       {"GdiplusStartup", "GdiplusShutdown", "GdipCreateFromHDC", "GdipDeleteGraphics",
        "GdipSetTextRenderingHint", "GdipCreateFontFamilyFromName", "GdipDeleteFontFamily",
        "GdipCreateFont", "GdipDeleteFont", "GdipCreateSolidFill", "GdipDeleteBrush",
        "GdipDrawString"}) {
    EXPECT_NE(::GetProcAddress(module, name), nullptr) << name;
  }
  const Session session;
  const auto create = reinterpret_cast<decltype(&GdipCreateSolidFill)>(
      ::GetProcAddress(module, "GdipCreateSolidFill"));
  GpSolidFill* brush = nullptr;
  EXPECT_EQ(create(0xFF102030, &brush), Ok);
  EXPECT_EQ(GdipDeleteBrush(brush), Ok);
  EXPECT_TRUE(::FreeLibrary(module));
}

// A text of 28 points, which are 37 pixels.
class Banner : public DrawingTest {
 protected:
  RECT InkAt(REAL x, REAL y) const {
    surface_.Clear();
    EXPECT_EQ(text_.Draw(L"Hill", {x, y, 0, 0}), Ok);
    return surface_.Ink();
  }

  const Session session_;
  const PlacedText text_{page_, 28};
};

TEST_F(Banner, TextLandsWhereOrdinaryTextDoesASixthOfItsSizeAfterItsPlace) {
  const RECT plain = InkAt(60, 12);
  EXPECT_GE(plain.left, 60 + 6);
  EXPECT_LE(plain.left, 60 + 6 + 6);
  EXPECT_GE(plain.top, 12 + 4);
  EXPECT_LE(plain.bottom, 12 + 45);
  EXPECT_NEAR(plain.bottom - plain.top, 37 * 3 / 4, 3);
  const RECT moved = InkAt(70, 20);
  EXPECT_EQ(moved.left - plain.left, 10);
  EXPECT_EQ(moved.top - plain.top, 8);
  const RECT shadow = InkAt(62.5F, 14.5F);
  EXPECT_NEAR(shadow.left - plain.left, 2.5, 1);
  EXPECT_NEAR(shadow.top - plain.top, 2.5, 1);

  surface_.Clear();
  const Selected font(page_, NewFont(L"Tahoma", -37, FW_BOLD));
  ::SetBkMode(page_, TRANSPARENT);
  ::TextOutW(page_, 60 + 6, 12, L"Hill", 4);
  const RECT ordinary = surface_.Ink();
  EXPECT_NEAR(plain.left, ordinary.left, 1);
  EXPECT_NEAR(plain.right, ordinary.right, 1);
  EXPECT_EQ(plain.top, ordinary.top);
  EXPECT_EQ(plain.bottom, ordinary.bottom);
}

TEST_F(Banner, InvalidArgumentsAreNamedByTheStatus) {
  GpGraphics* graphics = nullptr;
  GpFontFamily* family = nullptr;
  GpFont* font = nullptr;
  GpSolidFill* brush = nullptr;
  const RectF origin;
  EXPECT_EQ(GdipCreateFromHDC(nullptr, &graphics), OutOfMemory);
  EXPECT_EQ(GdipCreateFontFamilyFromName(L"No Such Face", nullptr, &family), FontFamilyNotFound);
  EXPECT_EQ(GdipCreateFontFamilyFromName(nullptr, nullptr, &family), InvalidParameter);
  EXPECT_EQ(GdipCreateFont(text_.family, 0, 0, UnitPoint, &font), InvalidParameter);
  EXPECT_EQ(GdipCreateFont(text_.family, 8, 0, UnitDisplay, &font), InvalidParameter);
  EXPECT_EQ(GdipCreateSolidFill(0x80000000, &brush), NotImplemented);
  EXPECT_EQ(GdipSetTextRenderingHint(text_.graphics, TextRenderingHint(6)), InvalidParameter);
  EXPECT_EQ(text_.Draw(L"x", {0, 0, 5, 5}), NotImplemented);
  EXPECT_EQ(GdipDrawString(text_.graphics, L"x", -1, text_.font, nullptr, nullptr, text_.brush),
            InvalidParameter);
  EXPECT_EQ(GdipDrawString(text_.graphics, L"x", -1, nullptr, &origin, nullptr, text_.brush),
            InvalidParameter);
  const HDC context = ::CreateCompatibleDC(nullptr);
  const PlacedText ended(context, 10);
  ::DeleteDC(context);
  EXPECT_EQ(ended.Draw(L"x", {0, 0, 0, 0}), Win32Error);
  EXPECT_EQ(surface_.Ink(), RECT{});
}

}  // namespace
