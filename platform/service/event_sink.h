// The target of ReportEventW: the journal's socket or syslog, and standard error too when the
// process runs in the foreground; or the sink that the simulated machine sets. Any thread.
#pragma once

#include <windef.h>

#include <functional>
#include <string>

namespace platform {

struct LoggedEvent {
  std::wstring source;
  WORD type = 0;
  DWORD id = 0;
  std::wstring text;
};

using EventSink = std::function<void(const LoggedEvent&)>;
void SetEventSink(EventSink sink);  // empty: the system's own again

}  // namespace platform
