#include "service/event_log.h"

#include <windows.h>

#include <cstdio>
#include <exception>

#include "service/service_names.h"
#include "storage/db_error.h"

namespace quillgate {
namespace {

constexpr std::size_t kTextLimit = 255;

void ReportToSystem(const std::wstring& text) {
  const HANDLE source = ::RegisterEventSourceW(nullptr, kServiceName);
  if (source == nullptr) return;
  LPCWSTR strings[] = {text.c_str()};
  ::ReportEventW(source, EVENTLOG_INFORMATION_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr);
  ::DeregisterEventSource(source);
}

// Converts the text of a standard exception, which is plain ASCII.
std::wstring Widened(const char* text) {
  const std::string narrow = text;
  return std::wstring(narrow.begin(), narrow.end());
}

}  // namespace

std::wstring CurrentExceptionText() {
  try {
    throw;
  } catch (const DBerror& error) {
    return L"Database error: " + error.Message();
  } catch (const std::exception& error) {
    return Widened(error.what());
  } catch (...) {
    return L"Unknown failure";
  }
}

void EventLog::LogEvent(const std::wstring& text) noexcept {
  try {
    const std::wstring cut = text.substr(0, kTextLimit);
    if (runningAsService_) {
      ReportToSystem(cut);
    } else {
      std::printf("%ls\n", cut.c_str());
      std::fflush(stdout);
    }
  } catch (...) {
    // Out of memory: the line is lost.
  }
}

void EventLog::LogCurrentException() noexcept {
  try {
    LogEvent(CurrentExceptionText());
  } catch (...) {
    LogEvent({});
  }
}

}  // namespace quillgate
