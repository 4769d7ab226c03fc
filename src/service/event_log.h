// What the program has to tell its administrator: lines in the system's event log under the
// service's name, or on standard output when the process does not run as the service. Any thread.
#pragma once

#include <atomic>
#include <string>

namespace quillgate {

// Within a handler: what the exception says that is being handled.
std::wstring CurrentExceptionText();

class EventLog {
 public:
  // Where the lines go: the event log (true) or standard output (false, the state at first).
  void SetRunningAsService(bool running) { runningAsService_ = running; }
  bool IsRunningAsService() const { return runningAsService_; }

  // Writes the text, cut to 255 characters, as information; signs of formats in it stand for
  // themselves. What cannot be written is lost.
  void LogEvent(const std::wstring& text) noexcept;

  // Within a handler: writes the text of the exception that is being handled.
  void LogCurrentException() noexcept;

 private:
  std::atomic<bool> runningAsService_{false};
};

}  // namespace quillgate
