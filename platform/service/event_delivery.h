// Delivers events to the sink that the simulated machine has set, else to the system's log. Any
// thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/service/event_sink.h"

namespace platform {

void DeliverEvent(const LoggedEvent& event);

// Writes to the journal's socket, with fields for the event's kind and data, else to syslog's;
// false when both fail.
bool WriteSystemLog(const LoggedEvent& event);

// The text of an event for a log that has lines.
std::string OneLine(std::wstring_view text);

}  // namespace platform
