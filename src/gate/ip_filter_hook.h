// The packet gate of the whole machine: the system's IP filter driver and the program's hook driver
// on top of it, switched by four control codes without data. Any thread, one call at a time.
#pragma once

#include <windows.h>

#include "gate/kernel_driver.h"

namespace quillgate {

// Device type 0x939C, METHOD_BUFFERED, FILE_ANY_ACCESS.
inline constexpr DWORD kHookBlock = 0x939C2094;
inline constexpr DWORD kHookPass = 0x939C2098;
inline constexpr DWORD kHookAllowLocal = 0x939C209C;
inline constexpr DWORD kHookBlockLocal = 0x939C20A0;

class IpFilterHook {
 public:
  // Starts both drivers, the hook driver only when the filter driver has started. Returns whether
  // both have.
  bool Start();
  // As Start, but only with installed drivers: nothing is installed or reconfigured.
  bool StartInstalled();

  // Stops both drivers: the filter driver first, then the hook driver.
  void Stop();

  bool IsAvailable() const { return available_; }
  // The reason why the hook is not available; 0 when it is.
  DWORD Error() const;

  // Lets everything pass, or blocks everything except, if chosen, local traffic. Returns whether
  // the driver executed the codes. The accounting ignores the result. Deliberate, see
  // docs/behaviour.md.
  bool Pass();
  bool Block(bool allowLocal);

 private:
  bool Send(DWORD code);

  KernelDriver filterDriver_;
  KernelDriver hookDriver_;
  bool available_ = false;
};

}  // namespace quillgate
