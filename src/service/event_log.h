// Messages for the administrator: lines in the event log of the system under the name of the
// service, or on standard output when the process does not run as the service. Any thread.
#pragma once

#include <atomic>
#include <string>

namespace quillgate {

// Call within a catch handler: returns the text of the exception that is being handled.
std::wstring CurrentExceptionText();

class EventLog {
 public:
  // Selects the event log (true) or standard output (false, the initial state).
  void SetRunningAsService(bool running) { runningAsService_ = running; }
  bool IsRunningAsService() const { return runningAsService_; }

  // Writes the text as information, cut to 255 characters. Format specifiers in it are not
  // interpreted. A line that cannot be written is lost.
  void LogEvent(const std::wstring& text) noexcept;

  // Call within a catch handler: writes the text of the exception that is being handled.
  void LogCurrentException() noexcept;

 private:
  std::atomic<bool> runningAsService_{false};
};

}  // namespace quillgate
