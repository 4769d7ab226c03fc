// Device contexts: what is selected and set for drawing, and the canvas it goes to. A context is
// used by one thread at a time; canvases live on the window thread, to which drawing is carried.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/gdi/bitmap.h"
#include "platform/gdi/brush.h"
#include "platform/gdi/canvas.h"
#include "platform/gdi/font.h"
#include "platform/gdi/pen.h"

namespace platform {

class Window;

class DeviceContext final : public Object {
 public:
  // In memory: draws on the bitmap that is selected. Screen: measures only. Window: draws on what
  // the window shows. Lent: draws on somebody's canvas.
  enum class Kind { kMemory, kScreen, kWindow, kLent };

  explicit DeviceContext(Kind contextKind);
  explicit DeviceContext(const std::shared_ptr<Window>& window);
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
  std::weak_ptr<Window> window_;
};

HDC InsertContext(std::shared_ptr<DeviceContext> context);

// Null, with ERROR_INVALID_HANDLE as the last error, when the handle is not a live context.
std::shared_ptr<DeviceContext> ContextOf(HDC context);

}  // namespace platform
