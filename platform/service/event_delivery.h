// Delivers events to the sink that the simulated machine has set, else to the system's log. Any
// thread.
#pragma once

#include "platform/service/event_sink.h"

namespace platform {

void DeliverEvent(const LoggedEvent& event);

// Writes to the journal's socket, else to syslog's; false when both fail.
bool WriteSystemLog(const LoggedEvent& event);

}  // namespace platform
