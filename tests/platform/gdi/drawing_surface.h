// A bitmap in memory to draw on and to look at, and what is selected into it. Used by one thread.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <vector>

#include "platform/kit/hidden_window.h"

inline constexpr COLORREF kBlack = RGB(0, 0, 0);
inline constexpr COLORREF kWhite = RGB(255, 255, 255);
inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kGreen = RGB(0, 255, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

// With a window, as programs that draw have one.
class DrawingTest : public ::testing::Test {
 private:
  HiddenWindow window_;
};

class DrawingSurface {
 public:
  // All white.
  DrawingSurface(int width, int height);
  ~DrawingSurface();
  DrawingSurface(const DrawingSurface&) = delete;
  DrawingSurface& operator=(const DrawingSurface&) = delete;

  HDC Get() const { return context_; }
  HBITMAP Bitmap() const { return bitmap_; }
  void Clear() const;
  COLORREF At(int x, int y) const { return ::GetPixel(context_, x, y); }
  // Row by row from the top.
  std::vector<COLORREF> Pixels() const;

  // The smallest rectangle around all that is not white; nothing when everything is.
  std::optional<RECT> Ink() const;

 private:
  int width_;
  int height_;
  HDC context_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
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

HFONT NewFont(std::wstring_view face, LONG height, LONG weight = FW_NORMAL);

// Of a text in the context's font.
SIZE ExtentOf(HDC context, std::wstring_view text);

bool operator==(const RECT& one, const RECT& other);
void PrintTo(const RECT& rectangle, std::ostream* stream);
