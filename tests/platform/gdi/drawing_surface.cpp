#include "platform/gdi/drawing_surface.h"

#include <algorithm>

DrawingSurface::DrawingSurface(int width, int height)
    : width_(width), height_(height), context_(::CreateCompatibleDC(nullptr)) {
  const HDC screen = ::GetDC(nullptr);
  bitmap_ = ::CreateCompatibleBitmap(screen, width, height);
  ::ReleaseDC(nullptr, screen);
  before_ = ::SelectObject(context_, bitmap_);
  Clear();
}

DrawingSurface::~DrawingSurface() {
  ::SelectObject(context_, before_);
  ::DeleteObject(bitmap_);
  ::DeleteDC(context_);
}

void DrawingSurface::Clear() const {
  const RECT all{0, 0, width_, height_};
  ::FillRect(context_, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
}

std::optional<RECT> DrawingSurface::Ink() const {
  RECT ink{width_, height_, 0, 0};
  for (LONG y = 0; y < height_; ++y) {
    for (LONG x = 0; x < width_; ++x) {
      if (At(x, y) == RGB(255, 255, 255)) continue;
      ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
             std::max(ink.bottom, y + 1)};
    }
  }
  return ink.right > ink.left ? std::optional(ink) : std::nullopt;
}
