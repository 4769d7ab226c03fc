// GDI+, if this system has it: loaded at run time, started and shut down by the service main
// thread, used by the code that draws on that thread. The process has one, created by service/.
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

  // Loads the library and starts GDI+. When either fails, GDI+ counts as not started.
  void Start();
  // Ignored when GDI+ was not started.
  void Shutdown();

  // The functions of GDI+; null when GDI+ was not started.
  const GdiPlusFunctions* Functions() const { return token_ == 0 ? nullptr : &functions_; }

 private:
  ModuleHandle library_;
  GdiPlusFunctions functions_;
  ULONG_PTR token_ = 0;
};

}  // namespace quillgate
