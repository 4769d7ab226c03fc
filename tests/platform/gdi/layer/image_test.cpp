// Icons and bitmaps from resources.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/resource_fixture.h"
#include "platform/kit/failing_call.h"

namespace {

// From the upper left to the lower right.
using Pixels = std::vector<COLORREF>;

HANDLE Load(WORD name, UINT type, int side, UINT flags = LR_DEFAULTCOLOR) {
  return ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(name), type, side, side, flags);
}

HICON Icon(WORD name, int side, UINT flags = LR_DEFAULTCOLOR) {
  return static_cast<HICON>(Load(name, IMAGE_ICON, side, flags));
}

class Image : public DrawingTest {
 protected:
  Image() { RegisterImageResources(); }
};

TEST_F(Image, ABitmapShowsItsPixels) {
  const HDC context = ::CreateCompatibleDC(nullptr);
  for (const WORD name : {kBitmap24, kBitmapPalette}) {
    const Selected bitmap(context, Load(name, IMAGE_BITMAP, 0));
    const Pixels pixels = {::GetPixel(context, 0, 0), ::GetPixel(context, 1, 0),
                           ::GetPixel(context, 0, 1), ::GetPixel(context, 1, 1)};
    EXPECT_EQ(pixels, (Pixels{kRed, kGreen, kBlue, kWhite})) << name;
  }
  ::DeleteDC(context);
}

TEST_F(Image, AnIconLeavesItsTransparentPixelsOut) {
  const DrawingSurface surface(2, 2);
  const auto pixels = [&](WORD name, HBRUSH background) {
    surface.Clear();
    const HICON icon = Icon(name, 0);
    EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 2, 2, 0, background, DI_NORMAL)) << name;
    EXPECT_TRUE(::DestroyIcon(icon));
    return surface.Pixels();
  };
  for (const WORD name : {kIconPng, kIconAlpha})
    EXPECT_EQ(pixels(name, nullptr), (Pixels{kRed, kWhite, kGreen, kBlue})) << name;
  EXPECT_EQ(pixels(kIconAlpha, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))),
            (Pixels{kRed, kBlack, kGreen, kBlue}))
      << "the background brush does not fill what the icon leaves out";
}

TEST_F(Image, ADamagedPictureShowsNothing) {
  const DrawingSurface surface(2, 2);
  const HICON icon = Icon(kIconCut, 0);
  EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 2, 2, 0, nullptr, DI_NORMAL));
  ::DestroyIcon(icon);
  EXPECT_EQ(surface.Ink(), std::nullopt);
  const HDC context = ::CreateCompatibleDC(nullptr);
  const Selected bitmap(context, Load(kBitmapCut, IMAGE_BITMAP, 0));
  EXPECT_EQ(::GetPixel(context, 1, 1), kBlack);
  ::DeleteDC(context);
}

TEST_F(Image, AnIconIsTheOneOfItsSizeWithTheMostColours) {
  struct Case {
    int side;
    UINT flags;
    COLORREF colour;
    LONG drawn;
  };
  const DrawingSurface surface(64, 64);
  const char* scale = std::getenv("QT_SCALE_FACTOR");
  const bool isFine = scale != nullptr && std::string_view(scale) != "1";
  // On a fine screen an icon is drawn from the picture that is as fine.
  const COLORREF small = isFine ? kGreen : kRed;
  // The next larger one is made smaller, the largest larger; the system's size is 32.
  for (const auto& [side, flags, colour, drawn] :
       {Case{16, LR_DEFAULTCOLOR, small, 16}, Case{32, LR_DEFAULTCOLOR, kGreen, 32},
        Case{24, LR_DEFAULTCOLOR, kGreen, 24}, Case{48, LR_DEFAULTCOLOR, kGreen, 48},
        Case{0, LR_DEFAULTSIZE, kGreen, 32}}) {
    surface.Clear();
    const HICON icon = Icon(kIconSizes, side, flags);
    EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL));
    ::DestroyIcon(icon);
    EXPECT_EQ(surface.At(4, 4), colour) << side;
    EXPECT_EQ(surface.Ink(), (RECT{0, 0, drawn, drawn})) << side;
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
  const HANDLE bitmap = ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kBitmap24),
                                     IMAGE_BITMAP, 7, 0, LR_DEFAULTCOLOR);
  BITMAP description{};
  EXPECT_EQ(::GetObjectW(bitmap, sizeof description, &description),
            static_cast<int>(sizeof description));
  EXPECT_EQ(description.bmWidth, 7);
  EXPECT_EQ(description.bmHeight, 2);
  EXPECT_TRUE(::DeleteObject(bitmap));
}

TEST_F(Image, LoadingSaysWhyItFails) {
  const HINSTANCE program = ::GetModuleHandleW(nullptr);
  const auto byName = [](HINSTANCE from, LPCWSTR name) {
    return ::LoadImageW(from, name, IMAGE_ICON, 0, 0, LR_DEFAULTCOLOR);
  };
  constexpr WORD kMissing = 4'000;
  constexpr UINT kFromFile = 0x10;
  constexpr DWORD kNoName = ERROR_RESOURCE_NAME_NOT_FOUND;
  constexpr DWORD kNoData = ERROR_RESOURCE_DATA_NOT_FOUND;
  constexpr DWORD kParameter = ERROR_INVALID_PARAMETER;
  ExpectFailures({
      {"missing icon", [] { return Load(kMissing, IMAGE_ICON, 0); }, kNoName},
      {"missing bitmap", [] { return Load(kMissing, IMAGE_BITMAP, 0); }, kNoName},
      {"name", [&] { return byName(program, L"ByName"); }, kNoName},
      {"system's", [&] { return byName(nullptr, MAKEINTRESOURCEW(kIconPng)); }, kNoData},
      {"file", [] { return Load(kIconPng, IMAGE_ICON, 0, kFromFile); }, kParameter},
      {"negative side", [] { return Load(kIconPng, IMAGE_ICON, -1); }, kParameter},
      {"unknown type", [] { return Load(kIconPng, 9, 0); }, kParameter},
      {"bitmap without pixels", [] { return Load(kBitmapEmpty, IMAGE_BITMAP, 0); }, kNoData},
  });
}

}  // namespace
