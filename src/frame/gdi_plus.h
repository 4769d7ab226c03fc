// GDI+, if this system has it: loaded at run time, started and shut down by the service main
// thread, asked by whoever draws on that thread. The process has one, made by service/.
#pragma once

#include <windows.h>

#include "frame/gdi_plus_functions.h"
#include "handles/handle.h"

namespace quillgate {

class GdiPlus {
 public:
  GdiPlus() = default;
  ~GdiPlus() { Shutdown(); }
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;

  // Loads and starts it. Without the library, or when it does not start, nothing changes.
  void Start();
  // Nothing when it was not started.
  void Shutdown();

  // What to draw with; null when GDI+ was not started.
  const GdiPlusFunctions* Functions() const { return token_ == 0 ? nullptr : &functions_; }

 private:
  ModuleHandle library_;
  GdiPlusFunctions functions_;
  ULONG_PTR token_ = 0;
};

}  // namespace quillgate
