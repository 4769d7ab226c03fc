// A device context: the selected objects, the drawing attributes and the canvas to draw on. A
// context is used by one thread at a time. Canvases live on the window thread, and drawing runs
// there.
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

// The result of drawing on an object of another family.
enum class Drawing {
  kDone,       // drawn, or clipped away as in a hidden window
  kGone,       // the target was destroyed; the last error is ERROR_INVALID_HANDLE
  kNoSurface,  // the target has no surface to draw on
};

// Runs the work with the canvas of the context's target.
using DrawOnTarget = std::function<Drawing(const std::function<void(Canvas&)>&)>;

class DeviceContext final : public Object {
 public:
  // kMemory draws on the selected bitmap. kScreen only measures. kWindow draws where its target
  // does. kLent draws on a canvas of the caller.
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

  // The current text attributes. Valid until another font is selected.
  TextStyle Style() const;
  // Runs the work on the window thread. Returns false, with the last error set, when this context
  // has nothing to draw on. `function` is the name of the API function, for the log.
  bool Draw(const char* function, const std::function<void(Canvas&)>& work);

 private:
  Canvas* lent_ = nullptr;
  DrawOnTarget target_;
};

// Inserts the context into the handle table. Returns null, with the last error set, when there is
// no desktop.
HDC MakeContext(std::shared_ptr<DeviceContext> context);
// Destroys a context of one of the kinds. Returns false, with ERROR_INVALID_HANDLE as the last
// error, for any other handle.
bool EndContext(HDC context, std::initializer_list<DeviceContext::Kind> kinds);

// Returns null, with ERROR_INVALID_HANDLE as the last error, when the handle is not a live context.
std::shared_ptr<DeviceContext> ContextOf(HDC context);

}  // namespace platform
