// The picture along the top of the logon dialog with "Log on" written on it. Composed in memory on
// the first paint, copied to the dialog on every one. Belongs to a dialog, on its thread.
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

  // Paints the banner as wide as the dialog, in pixels: its last column is continued as far as need
  // be. The text counts on the first paint. Nothing is painted without the picture.
  void Paint(HDC context, int dialogWidth, const std::wstring& text);

 private:
  void Compose(HDC like, const std::wstring& text);

  BannerTextDrawer drawer_;
  // Goes after the context in which it is selected.
  BitmapHandle bitmap_;
  MemoryDcHandle picture_;
};

}  // namespace quillgate
