// Device contexts: what is selected and set for drawing, and the canvas it goes to. A context is
// used by one thread at a time; canvases live on the window thread, to which drawing is carried.
#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <memory>

#include "platform/gdi/bitmap.h"
#include "platform/gdi/brush.h"
#include "platform/gdi/canvas.h"
#include "platform/gdi/font.h"
#include "platform/gdi/pen.h"

namespace platform {

// What became of drawing on something of another family's.
enum class Drawing {
  kDone,       // or clipped away, as it is with a hidden window
  kGone,       // what was to be drawn on has ended; ERROR_INVALID_HANDLE is the last error
  kNoSurface,  // it shows nothing that could be drawn on
};

// Runs the work with the canvas of what a context was made for.
using DrawOnTarget = std::function<Drawing(const std::function<void(Canvas&)>&)>;

class DeviceContext final : public Object {
 public:
  // In memory: draws on the bitmap that is selected. Screen: measures only. Window: draws where
  // its target does. Lent: draws on somebody's canvas.
  enum class Kind { kMemory, kScreen, kWindow, kLent };

  explicit DeviceContext(Kind contextKind);
  explicit DeviceContext(DrawOnTarget target);
  explicit DeviceContext(Canvas& canvas);

  const Kind kind;
  Selection<Font, HFONT> font;
  Selection<Pen, HPEN> pen;
  Selection<Brush, HBRUSH> brush;
  Selection<Bitmap, HBITMAP> bitmap;
  COLORREF textColour = RGB(0, 0, 0);
  COLORREF backgroundColour = RGB(255, 255, 255);
  int backgroundMode = OPAQUE;
  int rasterOperation = R2_COPYPEN;

  // How text is drawn at the moment, good until another font is selected.
  TextStyle Style() const;
  // Runs the work on the window thread. False, with the last error set, when this context does not
  // draw on anything; the name of the function called is for the log.
  bool Draw(const char* function, const std::function<void(Canvas&)>& work);

 private:
  Canvas* lent_ = nullptr;
  DrawOnTarget target_;
};

// Null, with the last error set, without a desktop.
HDC MakeContext(std::shared_ptr<DeviceContext> context);
// Ends a context of one of the kinds. False, with ERROR_INVALID_HANDLE as the last error, for any
// other handle.
bool EndContext(HDC context, std::initializer_list<DeviceContext::Kind> kinds);

// Null, with ERROR_INVALID_HANDLE as the last error, when the handle is not a live context.
std::shared_ptr<DeviceContext> ContextOf(HDC context);

}  // namespace platform
