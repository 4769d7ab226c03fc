#include "platform/service/event_delivery.h"

#include <ctime>
#include <mutex>

#include "platform/kernel/clock.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/service/service_host.h"

namespace platform {
namespace {

struct Sink {
  std::mutex mutex;
  EventSink sink;
};

Sink& ChosenSink() {
  // Never destroyed: programs log their last words from destructors of static objects.
  static Sink& chosen = *new Sink;
  return chosen;
}

std::string TimeText() {
  const std::tm fields = LocalFields(CurrentClock().Now());
  char text[32] = {};
  std::strftime(text, sizeof text, "%F %T", &fields);
  return text;
}

// A service's events go to the system's log. A program in the foreground also prints them, as it
// does when the system's log cannot be written.
void WriteOwnLog(const LoggedEvent& event) {
  const bool written = WriteSystemLog(event);
  const bool foreground = ServiceHost::Current() == nullptr;
  if (!written || foreground) {
    LogLine(TimeText() + ' ' + Utf8(event.source) + ": " + OneLine(event.text));
  }
}

}  // namespace

void SetEventSink(EventSink sink) {
  const std::lock_guard guard(ChosenSink().mutex);
  ChosenSink().sink = std::move(sink);
}

std::string OneLine(std::wstring_view text) {
  std::string line;
  for (const char letter : Utf8(text))
    line += letter == '\n' ? ", " : std::string(1, letter);
  return line;
}

void DeliverEvent(const LoggedEvent& event) {
  EventSink sink;
  {
    const std::lock_guard guard(ChosenSink().mutex);
    sink = ChosenSink().sink;
  }
  if (sink) {
    sink(event);
  } else {
    WriteOwnLog(event);
  }
}

}  // namespace platform
