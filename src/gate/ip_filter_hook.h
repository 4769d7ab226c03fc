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
  // Brings both drivers up, the hook driver only if the filter driver came up. Whether both did.
  bool Start();
  // The same with drivers that are installed already; nothing is installed or reconfigured.
  bool StartInstalled();

  // Brings both down: filter driver first, then the hook driver.
  void Stop();

  bool IsAvailable() const { return available_; }
  // Why the hook is not available; 0 when it is.
  DWORD Error() const;

  // Lets everything pass, or blocks everything but, if so chosen, local traffic. Without a driver
  // the codes go nowhere: the program's accounting goes on where the gate cannot act. Whether the
  // driver carried it out; callers that follow the rule that nothing depends on it ignore it.
  bool Pass();
  bool Block(bool allowLocal);

 private:
  bool Send(DWORD code);

  KernelDriver filterDriver_;
  KernelDriver hookDriver_;
  bool available_ = false;
};

}  // namespace quillgate
