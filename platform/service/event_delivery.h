// Brings events to where they are read: the sink that a test has set, or the system's own log. Any
// thread.
#pragma once

#include "platform/service/event_sink.h"

namespace platform {

void DeliverEvent(const LoggedEvent& event);

// The journal's socket, else syslog's; false when there is neither.
bool WriteSystemLog(const LoggedEvent& event);

}  // namespace platform
