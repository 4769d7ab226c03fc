// A bitmap in memory to draw on and to look at, and what is selected into it. Used by one thread.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string_view>
#include <vector>

#include "platform/kit/hidden_window.h"

inline constexpr COLORREF kBlack = RGB(0, 0, 0);
inline constexpr COLORREF kWhite = RGB(255, 255, 255);
inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kGreen = RGB(0, 255, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

class DrawingSurface {
 public:
  // All white.
  DrawingSurface(int width, int height)
      : width_(width), height_(height), context_(::CreateCompatibleDC(nullptr)) {
    const HDC screen = ::GetDC(nullptr);
    bitmap_ = ::CreateCompatibleBitmap(screen, width, height);
    ::ReleaseDC(nullptr, screen);
    ::SelectObject(context_, bitmap_);
    Clear();
  }
  ~DrawingSurface() {
    ::DeleteDC(context_);
    ::DeleteObject(bitmap_);
  }
  DrawingSurface(const DrawingSurface&) = delete;
  DrawingSurface& operator=(const DrawingSurface&) = delete;

  HDC Get() const { return context_; }
  HBITMAP Bitmap() const { return bitmap_; }
  // Ends the brush, unless it is the system's.
  void Fill(const RECT& area, HBRUSH brush) const {
    EXPECT_NE(::FillRect(context_, &area, brush), 0);
    ::DeleteObject(brush);
  }
  void Clear() const {
    Fill({0, 0, width_, height_}, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  }
  COLORREF At(int x, int y) const { return ::GetPixel(context_, x, y); }
  // Row by row from the top.
  std::vector<COLORREF> Pixels() const {
    std::vector<COLORREF> pixels;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x)
        pixels.push_back(At(x, y));
    }
    return pixels;
  }
  // The smallest rectangle around all that is not white; an empty one when everything is.
  RECT Ink() const {
    RECT ink{width_, height_, 0, 0};
    for (LONG y = 0; y < height_; ++y) {
      for (LONG x = 0; x < width_; ++x) {
        if (At(x, y) == kWhite) continue;
        ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
               std::max(ink.bottom, y + 1)};
      }
    }
    return ink.right > ink.left ? ink : RECT{};
  }

 private:
  int width_;
  int height_;
  HDC context_;
  HBITMAP bitmap_;
};

// With a window, as programs that draw have one, and a page.
class DrawingTest : public ::testing::Test {
 private:
  HiddenWindow window_;

 protected:
  const DrawingSurface surface_{200, 120};
  const HDC page_ = surface_.Get();
};

// Selected for the time of its life, and deleted then.
class Selected {
 public:
  Selected(HDC context, HGDIOBJ object)
      : context_(context), object_(object), before_(::SelectObject(context, object)) {}
  ~Selected() {
    ::SelectObject(context_, before_);
    ::DeleteObject(object_);
  }
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;

 private:
  HDC context_;
  HGDIOBJ object_;
  HGDIOBJ before_;
};

inline HFONT NewFont(std::wstring_view face, LONG height, LONG weight = FW_NORMAL) {
  LOGFONTW font{};
  font.lfHeight = height;
  font.lfWeight = weight;
  std::ranges::copy(face, font.lfFaceName);
  return ::CreateFontIndirectW(&font);
}

// Of a text in the context's font.
inline SIZE ExtentOf(HDC context, std::wstring_view text) {
  SIZE size{};
  EXPECT_TRUE(::GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size));
  return size;
}

// Of an object that must have a description of that type.
template <class Description>
Description DescriptionOf(HGDIOBJ object) {
  Description description{};
  constexpr int kSize = sizeof description;
  EXPECT_EQ(::GetObjectW(object, 0, nullptr), kSize);
  EXPECT_EQ(::GetObjectW(object, kSize, &description), kSize);
  return description;
}

inline bool operator==(const RECT& one, const RECT& other) {
  return one.left == other.left && one.top == other.top && one.right == other.right &&
         one.bottom == other.bottom;
}
inline bool IsWithin(const RECT& part, const RECT& area) {
  return part.left >= area.left && part.top >= area.top && part.right <= area.right &&
         part.bottom <= area.bottom;
}
inline void PrintTo(const RECT& rectangle, std::ostream* stream) {
  *stream << rectangle.left << ", " << rectangle.top << ", " << rectangle.right << ", "
          << rectangle.bottom;
}
