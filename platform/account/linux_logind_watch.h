// The watch of logind: a thread that reads the seat when something has changed there, and notifies
// the observer. Connects again while there is no bus. Owned by the caller of WatchSessions.
#pragma once

#include <mutex>
#include <thread>
#include <vector>

#include "platform/account/linux_sleep_clock.h"
#include "platform/account/session_watch.h"
#include "platform/kernel/file_descriptor.h"

namespace platform {

class LogindClient;
enum class LogindNotice;

class LogindWatch final : public SessionWatch {
 public:
  LogindWatch(SessionObserver& observer, SleepNotice sleep);
  ~LogindWatch() override;
  LogindWatch(const LogindWatch&) = delete;
  LogindWatch& operator=(const LogindWatch&) = delete;

 private:
  class OpenSocket;

  void Run(const std::stop_token& ended) noexcept;
  void ServeConnection(const std::stop_token& ended);
  void Serve(LogindClient& client, const std::stop_token& ended);
  // Returns whether the seat is to be read again.
  bool Handle(LogindNotice notice, LogindClient& client, const std::stop_token& ended);
  // Delays the next sleep, and notifies of the end of the last one.
  void HoldSleep(LogindClient& client);
  // Whether nothing delays the next sleep, which is to be delayed.
  bool LacksInhibitor() const;
  void DelaySleep(LogindClient& client);
  // False when logind does not answer.
  bool ReadSeat(LogindClient& client);
  // Returns when something has happened, after some seconds when `mustRetry`. True when a session's
  // leader has ended.
  bool Wait(const LogindClient& client, bool mustRetry);
  void NoticeSleepOfOthers();
  void LogFailure(const char* what);

  SessionObserver& observer_;
  const SleepNotice sleep_;
  const FileDescriptor wake_;
  std::mutex mutex_;
  int socket_ = -1;  // of the connection; guarded by the mutex

  // Of the thread.
  SleepClock clock_;
  FileDescriptor inhibitor_;
  std::vector<FileDescriptor> leaders_;
  bool isAsleep_ = false;  // the observer knows that the machine sleeps
  bool hasFailed_ = false;
  bool isSleepUndelayed_ = false;  // as the log has it

  std::jthread thread_;  // last: it uses all others
};

}  // namespace platform
