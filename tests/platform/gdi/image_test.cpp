// Icons and bitmaps from resources of every format.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/resource_fixture.h"

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kYellow = RGB(255, 255, 0);
constexpr COLORREF kBlack = RGB(0, 0, 0);

// From the upper left to the lower right.
using Pixels = std::array<COLORREF, 4>;

HINSTANCE Program() {
  return ::GetModuleHandleW(nullptr);
}

HICON Icon(WORD name, int side, UINT flags = LR_DEFAULTCOLOR) {
  RegisterImageResources();
  return static_cast<HICON>(
      ::LoadImageW(Program(), MAKEINTRESOURCEW(name), IMAGE_ICON, side, side, flags));
}

Pixels PixelsOf(HDC context) {
  return {::GetPixel(context, 0, 0), ::GetPixel(context, 1, 0), ::GetPixel(context, 0, 1),
          ::GetPixel(context, 1, 1)};
}

Pixels DrawnIcon(WORD name) {
  const DrawingSurface surface(2, 2);
  const HICON icon = Icon(name, 0);
  EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL)) << name;
  EXPECT_TRUE(::DestroyIcon(icon));
  return PixelsOf(surface.Get());
}

TEST(Image, BitmapsOfEveryFormatShowTheirPixels) {
  RegisterImageResources();
  OnDesktop([] {
    const HDC context = ::CreateCompatibleDC(nullptr);
    const auto pixels = [context](WORD name) {
      const HBITMAP bitmap = ::LoadBitmapW(Program(), MAKEINTRESOURCEW(name));
      const HGDIOBJ before = ::SelectObject(context, bitmap);
      EXPECT_NE(before, nullptr) << name;
      const Pixels shown = PixelsOf(context);
      ::SelectObject(context, before);
      EXPECT_TRUE(::DeleteObject(bitmap));
      return shown;
    };
    for (const WORD name : {kBitmap24, kBitmapFromTop, kBitmap32, kBitmap8, kBitmap4})
      EXPECT_EQ(pixels(name), (Pixels{kRed, kGreen, kBlue, kWhite})) << name;
    EXPECT_EQ(pixels(kBitmap1), (Pixels{kBlack, kYellow, kYellow, kBlack}));
    ::DeleteDC(context);
  });
}

TEST(Image, IconsOfEveryFormatLeaveTheirMaskedPixelsOut) {
  OnDesktop([] {
    for (const WORD name :
         {kIconPng, kIconAlpha, kIconMask32, kIconMask24, kIconMask8, kIconMask4}) {
      EXPECT_EQ(DrawnIcon(name), (Pixels{kRed, kWhite, kGreen, kBlue})) << name;
    }
    EXPECT_EQ(DrawnIcon(kIconMask1), (Pixels{kBlack, kWhite, kYellow, kBlack}));
  });
}

TEST(Image, ABackgroundBrushFillsWhatAnIconLeavesOut) {
  OnDesktop([] {
    const DrawingSurface surface(2, 2);
    const HICON icon = Icon(kIconAlpha, 0);
    EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0,
                             static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)), DI_NORMAL));
    EXPECT_EQ(surface.At(1, 0), kBlack);
    EXPECT_FALSE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0, nullptr, DI_MASK));
    ::DestroyIcon(icon);
    EXPECT_FALSE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_CURSOR_HANDLE);
  });
}

TEST(Image, AnIconIsTheOneOfItsSizeWithTheMostColours) {
  OnDesktop([] {
    const DrawingSurface surface(64, 64);
    const auto centre = [&](int side, UINT flags) {
      const HICON icon = Icon(kIconSizes, side, flags);
      surface.Clear();
      EXPECT_TRUE(::DrawIconEx(surface.Get(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL));
      ::DestroyIcon(icon);
      const auto ink = surface.Ink();
      return std::pair(surface.At(4, 4), ink.has_value() ? ink->right : 0);
    };
    EXPECT_EQ(centre(16, LR_DEFAULTCOLOR), std::pair(kRed, LONG{16}));
    EXPECT_EQ(centre(32, LR_DEFAULTCOLOR), std::pair(kGreen, LONG{32}));
    // The next larger one made smaller; the largest made larger; the system's size.
    EXPECT_EQ(centre(24, LR_DEFAULTCOLOR), std::pair(kGreen, LONG{24}));
    EXPECT_EQ(centre(48, LR_DEFAULTCOLOR), std::pair(kGreen, LONG{48}));
    EXPECT_EQ(centre(0, LR_DEFAULTSIZE), std::pair(kGreen, LONG{32}));
  });
}

TEST(Image, ASharedIconIsLoadedOnceAndKept) {
  WithoutDesktop([] {
    const HICON shared = Icon(kIconSizes, 16, LR_SHARED);
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(Icon(kIconSizes, 16, LR_SHARED), shared);
    EXPECT_NE(Icon(kIconSizes, 32, LR_SHARED), shared);
    EXPECT_TRUE(::DestroyIcon(shared));
    EXPECT_TRUE(::DestroyIcon(shared)) << "it is gone";
    EXPECT_EQ(Icon(kIconSizes, 16, LR_SHARED), shared);
    EXPECT_EQ(::LoadIconW(Program(), MAKEINTRESOURCEW(kIconSizes)),
              Icon(kIconSizes, 32, LR_SHARED));
  });
}

TEST(Image, AnIconOfOnesOwnIsDestroyedOnce) {
  WithoutDesktop([] {
    const HICON icon = Icon(kIconPng, 16);
    EXPECT_NE(icon, Icon(kIconPng, 16));
    EXPECT_FALSE(::DeleteObject(icon));
    EXPECT_TRUE(::DestroyIcon(icon));
    EXPECT_FALSE(::DestroyIcon(icon));
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_CURSOR_HANDLE);
  });
}

TEST(Image, BitmapsAreMeasuredAndLoadedInAnotherSize) {
  RegisterImageResources();
  WithoutDesktop([] {
    const HANDLE bitmap =
        ::LoadImageW(Program(), MAKEINTRESOURCEW(kBitmap24), IMAGE_BITMAP, 7, 0, LR_DEFAULTCOLOR);
    BITMAP description{};
    EXPECT_EQ(::GetObjectW(bitmap, sizeof description, &description),
              static_cast<int>(sizeof description));
    EXPECT_EQ(description.bmWidth, 7);
    EXPECT_EQ(description.bmHeight, 2);
    EXPECT_TRUE(::DeleteObject(bitmap));
  });
}

TEST(Image, WhatCannotBeLoadedSaysWhy) {
  RegisterImageResources();
  WithoutDesktop([] {
    const auto error = [](HINSTANCE instance, LPCWSTR name, UINT type, int side, UINT flags) {
      ::SetLastError(NO_ERROR);
      EXPECT_EQ(::LoadImageW(instance, name, type, side, side, flags), nullptr);
      return ::GetLastError();
    };
    const LPWSTR missing = MAKEINTRESOURCEW(4'000);
    const LPWSTR icon = MAKEINTRESOURCEW(kIconPng);
    constexpr UINT kFromFile = 0x10;
    EXPECT_EQ(error(Program(), missing, IMAGE_ICON, 0, 0), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(error(Program(), missing, IMAGE_BITMAP, 0, 0), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(error(Program(), L"ByName", IMAGE_ICON, 0, 0), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(error(nullptr, icon, IMAGE_ICON, 0, 0), ERROR_RESOURCE_DATA_NOT_FOUND);
    EXPECT_EQ(error(Program(), icon, IMAGE_ICON, 0, kFromFile), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(error(Program(), icon, IMAGE_ICON, -1, 0), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(error(Program(), icon, 9, 0, 0), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(error(Program(), MAKEINTRESOURCEW(kBitmapCut), IMAGE_BITMAP, 0, 0),
              ERROR_RESOURCE_DATA_NOT_FOUND);
    EXPECT_EQ(error(Program(), MAKEINTRESOURCEW(kIconCut), IMAGE_ICON, 0, 0),
              ERROR_RESOURCE_DATA_NOT_FOUND);
  });
}

}  // namespace
