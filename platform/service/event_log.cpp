// RegisterEventSourceW, ReportEventW, DeregisterEventSource.
#include <windows.h>

#include <memory>
#include <string>

#include "platform/kernel/api_result.h"
#include "platform/kernel/handle_table.h"
#include "platform/kernel/log.h"
#include "platform/service/event_delivery.h"

namespace platform {
namespace {

constexpr std::size_t kMaxCharacters = 31839;  // of one string of an event

class EventSource final : public Object {
 public:
  explicit EventSource(std::wstring itsName) : name(std::move(itsName)) {}
  const std::wstring name;
};

DWORD OpenSource(LPCWSTR server, LPCWSTR source, HANDLE& handle) {
  if (server != nullptr && *server != L'\0') {
    LogLine("RegisterEventSourceW: no other machines");
    return RPC_S_SERVER_UNAVAILABLE;
  }
  if (source == nullptr || *source == L'\0') return ERROR_INVALID_PARAMETER;
  handle = Handles().Insert(HandleKind::kEventSource, std::make_shared<EventSource>(source));
  return NO_ERROR;
}

bool IsEventType(WORD type) {
  return type == EVENTLOG_INFORMATION_TYPE || type == EVENTLOG_WARNING_TYPE ||
         type == EVENTLOG_ERROR_TYPE;
}

// Joins the strings of an event with blanks.
DWORD JoinStrings(WORD count, const LPCWSTR* strings, std::wstring& text) {
  if (count != 0 && strings == nullptr) return ERROR_INVALID_PARAMETER;
  for (WORD i = 0; i < count; ++i) {
    const std::wstring_view each = strings[i] == nullptr ? L"" : strings[i];
    if (each.size() > kMaxCharacters) return ERROR_INVALID_PARAMETER;
    if (i > 0) text += L' ';
    text += each;
  }
  return NO_ERROR;
}

DWORD Report(HANDLE handle, LoggedEvent event, WORD stringCount, const LPCWSTR* strings) {
  const auto source = Resolve<EventSource>(HandleKind::kEventSource, handle);
  if (source == nullptr) return ERROR_INVALID_HANDLE;
  if (!IsEventType(event.type)) return ERROR_INVALID_PARAMETER;
  event.source = source->name;
  const DWORD error = JoinStrings(stringCount, strings, event.text);
  if (error == NO_ERROR) DeliverEvent(event);
  return error;
}

}  // namespace
}  // namespace platform

extern "C" {

HANDLE WINAPI RegisterEventSourceW(LPCWSTR server, LPCWSTR source) try {
  HANDLE handle = nullptr;
  const DWORD error = platform::OpenSource(server, source, handle);
  return platform::HandleResult<HANDLE>(error, handle, nullptr);
} catch (...) {
  return platform::FailedCall<HANDLE>(nullptr);
}

BOOL WINAPI DeregisterEventSource(HANDLE eventLog) try {
  using platform::HandleKind;
  const bool closed = platform::Handles().Remove(HandleKind::kEventSource, eventLog) != nullptr;
  return platform::BoolResult(closed ? NO_ERROR : ERROR_INVALID_HANDLE);
} catch (...) {
  return platform::FailedCall(FALSE);
}

BOOL WINAPI ReportEventW(HANDLE eventLog, WORD type, WORD, DWORD eventId, PVOID userSid,
                         WORD stringCount, DWORD rawBytes, LPCWSTR* strings, LPVOID) try {
  if (userSid != nullptr || rawBytes != 0) {
    platform::LogLine("ReportEventW: no users and no raw data");
    return platform::BoolResult(ERROR_INVALID_PARAMETER);
  }
  platform::LoggedEvent event;
  event.type = type;
  event.id = eventId;
  return platform::BoolResult(platform::Report(eventLog, std::move(event), stringCount, strings));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
