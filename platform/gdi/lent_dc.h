// A device context on a canvas of the caller, valid during one WM_PAINT or WM_DRAWITEM. Its handle
// is stale afterwards. Used on the window thread.
#pragma once

#include <windows.h>

#include "platform/gdi/canvas.h"

namespace platform {

class LentDc {
 public:
  explicit LentDc(Canvas& canvas);
  ~LentDc();
  LentDc(const LentDc&) = delete;
  LentDc& operator=(const LentDc&) = delete;

  HDC Get() const { return handle_; }

 private:
  HDC handle_;
};

}  // namespace platform
