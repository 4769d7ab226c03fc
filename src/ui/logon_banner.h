// The image along the top of the logon dialog with "Log on" written on it. Composed in memory on
// the first paint, copied to the dialog on every paint. Belongs to a dialog, on its thread.
#pragma once

#include <windows.h>

#include <string>

#include "frame/banner_text_drawer.h"
#include "handles/gdi_handles.h"

namespace quillgate {

class LogonBanner {
 public:
  static constexpr int kWidth = 367;  // pixels
  static constexpr int kHeight = 74;

  explicit LogonBanner(const GdiPlus& gdiPlus);

  // Paints the banner as wide as the dialog, in pixels: the last column of the image is repeated up
  // to the right edge. The text of the first call is used. Paints nothing when the image cannot be
  // loaded.
  void Paint(HDC context, int dialogWidth, const std::wstring& text);

 private:
  void Compose(HDC reference, const std::wstring& text);

  BannerTextDrawer drawer_;
  // Declared first, so that it is destroyed after the context in which it is selected.
  BitmapHandle bitmap_;
  MemoryDcHandle composed_;
};

}  // namespace quillgate
