#include "platform/gdi/drawing_surface.h"

#include <algorithm>
#include <ostream>

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

std::vector<COLORREF> DrawingSurface::Pixels() const {
  std::vector<COLORREF> pixels;
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x)
      pixels.push_back(At(x, y));
  }
  return pixels;
}

std::optional<RECT> DrawingSurface::Ink() const {
  RECT ink{width_, height_, 0, 0};
  for (LONG y = 0; y < height_; ++y) {
    for (LONG x = 0; x < width_; ++x) {
      if (At(x, y) == kWhite) continue;
      ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
             std::max(ink.bottom, y + 1)};
    }
  }
  return ink.right > ink.left ? std::optional(ink) : std::nullopt;
}

HFONT NewFont(std::wstring_view face, LONG height, LONG weight) {
  LOGFONTW font{};
  font.lfHeight = height;
  font.lfWeight = weight;
  std::ranges::copy(face, font.lfFaceName);
  return ::CreateFontIndirectW(&font);
}

SIZE ExtentOf(HDC context, std::wstring_view text) {
  SIZE size{};
  EXPECT_TRUE(::GetTextExtentPoint32W(context, text.data(), static_cast<int>(text.size()), &size));
  return size;
}

bool operator==(const RECT& one, const RECT& other) {
  return one.left == other.left && one.top == other.top && one.right == other.right &&
         one.bottom == other.bottom;
}

void PrintTo(const RECT& rectangle, std::ostream* stream) {
  *stream << rectangle.left << ", " << rectangle.top << ", " << rectangle.right << ", "
          << rectangle.bottom;
}
