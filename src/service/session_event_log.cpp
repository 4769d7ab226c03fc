#include "service/session_event_log.h"

#include <initializer_list>
#include <utility>

namespace quillgate {
namespace {

const wchar_t* ReasonWord(AccessReason reason) {
  switch (reason) {
    case AccessReason::kHourBlocked:
      return L"hour not allowed";
    case AccessReason::kTimeUsedUp:
      return L"time limit reached";
    case AccessReason::kDownloadUsedUp:
      return L"download limit reached";
    case AccessReason::kAllowed:
    case AccessReason::kNobodyLoggedOn:
      break;
  }
  return L"logged off";
}

using Line = std::pair<const wchar_t*, std::wstring>;

// The name comes last: an event is cut at a length that only a very long name reaches.
void LogLines(EventLog& events, std::wstring text, std::initializer_list<Line> lines) {
  for (const auto& [name, value] : lines)
    text += L"\n" + std::wstring(name) + L": " + value;
  events.LogEvent(text);
}

}  // namespace

void SessionEventLog::SessionBegan(const std::wstring& user) {
  try {
    LogLines(events_, L"Session started", {{L"User", user}});
  } catch (...) {
    // Out of memory: the line is lost.
  }
}

void SessionEventLog::SessionEnded(const SessionRecord& session, AccessReason reason) {
  try {
    LogLines(events_, L"Session ended",
             {{L"Reason", ReasonWord(reason)},
              {L"Seconds", std::to_wstring(session.seconds)},
              {L"Bytes received", std::to_wstring(session.bytesReceived)},
              {L"Bytes sent", std::to_wstring(session.bytesSent)},
              {L"User", session.user}});
  } catch (...) {
    // Out of memory: the line is lost.
  }
}

}  // namespace quillgate
