// A bitmap in memory to draw on and to look at. Used by one thread.
#pragma once

#include <windows.h>

#include <optional>

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

  // The smallest rectangle around all that is not white; nothing when everything is.
  std::optional<RECT> Ink() const;

 private:
  int width_;
  int height_;
  HDC context_;
  HBITMAP bitmap_;
  HGDIOBJ before_;
};
