// Draws text with a shadow onto an image: through GDI+ when it was started, otherwise through GDI,
// which positions text and shadow a little differently.
#pragma once

#include <windows.h>

#include <string>

#include "frame/gdi_plus.h"

namespace quillgate {

struct BannerFont {
  std::wstring face;
  int points = 0;
  bool bold = false;
  bool italic = false;
  COLORREF shadowColour = 0;
  COLORREF textColour = 0;
};

class BannerTextDrawer {
 public:
  BannerTextDrawer(const GdiPlus& gdiPlus, BannerFont font);

  // The position is the upper left corner of the text, in pixels.
  void Draw(HDC context, int x, int y, const std::wstring& text) const;

 private:
  // False when GDI+ cannot create the objects that it needs.
  bool DrawWithGdiPlus(const GdiPlusFunctions& functions, HDC context, int x, int y,
                       const std::wstring& text) const;
  void DrawWithGdi(HDC context, int x, int y, const std::wstring& text) const;

  const GdiPlus& gdiPlus_;
  BannerFont font_;
};

}  // namespace quillgate
