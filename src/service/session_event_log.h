// Sessions in the event log: who, why and how much, in English, as lines that a program can read.
// Any thread.
#pragma once

#include "service/event_log.h"
#include "session/session_events.h"

namespace quillgate {

class SessionEventLog final : public SessionEvents {
 public:
  explicit SessionEventLog(EventLog& events) : events_(events) {}

  void SessionBegan(const std::wstring& user) override;
  void SessionEnded(const SessionRecord& session, AccessReason reason) override;

 private:
  EventLog& events_;
};

}  // namespace quillgate
