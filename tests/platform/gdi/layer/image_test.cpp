// Icons and bitmaps from resources.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/resource_fixture.h"
#include "platform/kit/failing_call.h"

namespace {

using Pixels = std::vector<COLORREF>;

HANDLE Load(WORD name, UINT type, int width, int height, UINT flags = LR_DEFAULTCOLOR) {
  return ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(name), type, width, height,
                      flags);
}

HICON Icon(WORD name, int side, UINT flags = LR_DEFAULTCOLOR) {
  return static_cast<HICON>(Load(name, IMAGE_ICON, side, side, flags));
}

// Two by two pixels, from the upper left to the lower right.
Pixels CornerOf(HDC context) {
  return {::GetPixel(context, 0, 0), ::GetPixel(context, 1, 0), ::GetPixel(context, 0, 1),
          ::GetPixel(context, 1, 1)};
}

class Image : public DrawingTest {
 protected:
  Image() { RegisterImageResources(); }

  // Draws it at that size, 0 for its own, on a page that is empty again, and ends it.
  void Show(HICON icon, int side, HBRUSH background = nullptr) const {
    surface_.Clear();
    EXPECT_TRUE(::DrawIconEx(page_, 0, 0, icon, side, side, 0, background, DI_NORMAL));
    EXPECT_TRUE(::DestroyIcon(icon));
  }
};

TEST_F(Image, ABitmapShowsItsPixels) {
  for (const WORD name : {kBitmap24, kBitmapPalette}) {
    const Selected bitmap(page_, Load(name, IMAGE_BITMAP, 0, 0));
    EXPECT_EQ(CornerOf(page_), (Pixels{kRed, kGreen, kBlue, kWhite})) << name;
  }
}

TEST_F(Image, AnIconLeavesItsTransparentPixelsOut) {
  for (const WORD name : {kIconPng, kIconAlpha}) {
    Show(Icon(name, 0), 2);
    EXPECT_EQ(CornerOf(page_), (Pixels{kRed, kWhite, kGreen, kBlue})) << name;
  }
  Show(Icon(kIconAlpha, 0), 2, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
  EXPECT_EQ(CornerOf(page_), (Pixels{kRed, kBlack, kGreen, kBlue}))
      << "the background brush does not fill what the icon leaves out";
}

TEST_F(Image, ADamagedPictureShowsNothing) {
  Show(Icon(kIconCut, 0), 2);
  EXPECT_EQ(surface_.Ink(), RECT{});
  const Selected bitmap(page_, Load(kBitmapCut, IMAGE_BITMAP, 0, 0));
  EXPECT_EQ(::GetPixel(page_, 1, 1), kBlack);
}

TEST_F(Image, AnIconIsTheOneOfItsSizeWithTheMostColours) {
  struct Case {
    int side;
    UINT flags;
    COLORREF colour;
    LONG drawn;
  };
  const char* scale = std::getenv("QT_SCALE_FACTOR");
  const bool isFine = scale != nullptr && std::string_view(scale) != "1";
  // On a fine screen an icon is drawn from the picture that is as fine.
  const COLORREF small = isFine ? kGreen : kRed;
  // The next larger one is made smaller, the largest larger; the system's size is 32.
  for (const auto& [side, flags, colour, drawn] :
       {Case{16, LR_DEFAULTCOLOR, small, 16}, Case{32, LR_DEFAULTCOLOR, kGreen, 32},
        Case{24, LR_DEFAULTCOLOR, kGreen, 24}, Case{48, LR_DEFAULTCOLOR, kGreen, 48},
        Case{0, LR_DEFAULTSIZE, kGreen, 32}}) {
    Show(Icon(kIconSizes, side, flags), 0);
    EXPECT_EQ(surface_.At(4, 4), colour) << side;
    EXPECT_EQ(surface_.Ink(), (RECT{0, 0, drawn, drawn})) << side;
  }
}

TEST_F(Image, ASharedIconIsLoadedOnceAndKeptAnotherEveryTime) {
  const HICON shared = Icon(kIconSizes, 16, LR_SHARED);
  ASSERT_NE(shared, nullptr);
  EXPECT_EQ(Icon(kIconSizes, 16, LR_SHARED), shared);
  EXPECT_NE(Icon(kIconSizes, 32, LR_SHARED), shared);
  EXPECT_TRUE(::DestroyIcon(shared));
  EXPECT_TRUE(::DestroyIcon(shared)) << "it is gone";
  EXPECT_EQ(Icon(kIconSizes, 16, LR_SHARED), shared);
  EXPECT_EQ(::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconSizes)),
            Icon(kIconSizes, 32, LR_SHARED));
  const HICON own = Icon(kIconPng, 16);
  const HICON other = Icon(kIconPng, 16);
  EXPECT_NE(own, other);
  EXPECT_TRUE(::DestroyIcon(own));
  EXPECT_TRUE(::DestroyIcon(other));
}

TEST_F(Image, BitmapsAreMeasuredAndLoadedInAnotherSize) {
  const HANDLE bitmap = Load(kBitmap24, IMAGE_BITMAP, 7, 0);
  const auto description = DescriptionOf<BITMAP>(bitmap);
  EXPECT_EQ(description.bmWidth, 7);
  EXPECT_EQ(description.bmHeight, 2);
  EXPECT_TRUE(::DeleteObject(bitmap));
}

TEST_F(Image, LoadingSaysWhyItFails) {
  const HINSTANCE program = ::GetModuleHandleW(nullptr);
  const auto* const png = MAKEINTRESOURCEW(kIconPng);
  constexpr WORD kMissing = 4'000;
  constexpr UINT kFromFile = 0x10;
  constexpr DWORD kNoName = ERROR_RESOURCE_NAME_NOT_FOUND;
  constexpr DWORD kNoData = ERROR_RESOURCE_DATA_NOT_FOUND;
  constexpr DWORD kParameter = ERROR_INVALID_PARAMETER;
  ExpectFailures({
      {"missing icon", [] { return Load(kMissing, IMAGE_ICON, 0, 0); }, kNoName},
      {"missing bitmap", [] { return Load(kMissing, IMAGE_BITMAP, 0, 0); }, kNoName},
      {"name", [&] { return ::LoadImageW(program, L"ByName", IMAGE_ICON, 0, 0, 0); }, kNoName},
      {"system's", [&] { return ::LoadImageW(nullptr, png, IMAGE_ICON, 0, 0, 0); }, kNoData},
      {"file", [] { return Load(kIconPng, IMAGE_ICON, 0, 0, kFromFile); }, kParameter},
      {"negative side", [] { return Load(kIconPng, IMAGE_ICON, -1, -1); }, kParameter},
      {"unknown type", [] { return Load(kIconPng, 9, 0, 0); }, kParameter},
      {"bitmap without pixels", [] { return Load(kBitmapEmpty, IMAGE_BITMAP, 0, 0); }, kNoData},
  });
}

}  // namespace
