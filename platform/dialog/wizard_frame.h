// What a wizard shows around its pages: the watermark beside outer pages, the band with title,
// subtitle and bitmap above inner ones, and the lines. Owned by the sheet, on the window thread.
#pragma once

#include <prsht.h>

#include <span>
#include <string>

#include "platform/dialog/dialog_units.h"
#include "platform/dialog/sheet_layout.h"
#include "platform/gdi/owned_object.h"

namespace platform {

struct HeaderText {
  std::wstring title;
  std::wstring subTitle;
};

class WizardFrame {
 public:
  // Reads the names of the bitmaps from the header. A bitmap that cannot be loaded is not shown.
  explicit WizardFrame(const PROPSHEETHEADERW& header);

  // Computes the layout for the largest pages and the highest header. The window is only used to
  // measure text.
  void LayOut(HWND sheet, SIZE inner, SIZE outer, std::span<const HeaderText> headers,
              const DialogUnits& units);
  const WizardLayout& Layout() const { return layout_; }
  const RECT& PageBounds(bool isOuter) const { return isOuter ? layout_.outer : layout_.inner; }

  void PaintBand(HDC context, const HeaderText& header) const;
  void PaintLineAboveButtons(HDC context) const;
  // Paints the background of an outer page, whose client area has the same origin as the sheet's.
  void PaintOuterPage(HDC context) const;

 private:
  OwnedBitmap Load(LPCWSTR name, SIZE size) const;
  // The right edge of the texts in a band of that width.
  LONG TextEnd(LONG width) const;
  int BandHeight(HWND sheet, int width, std::span<const HeaderText> headers) const;

  const HINSTANCE instance_;
  const LPCWSTR watermarkName_;
  OwnedBitmap watermark_;
  OwnedBitmap bitmap_;
  SIZE bitmapSize_{};
  OwnedFont titleFont_;
  OwnedFont textFont_;
  DialogUnits units_;
  WizardLayout layout_;
};

}  // namespace platform
