#include "platform/account/linux_logind_watch.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <exception>
#include <string>
#include <utility>

#include "platform/account/linux_logind.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

constexpr int kRetryMilliseconds = 5000;
constexpr int kNoLimit = -1;

// The program's own threads take its signals.
void BlockSignals() {
  sigset_t all;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace

// Lets the destructor of the watch end what the connection waits for.
class LogindWatch::OpenSocket {
 public:
  OpenSocket(LogindWatch& watch, int socket) : watch_(watch) { Set(socket); }
  ~OpenSocket() { Set(-1); }
  OpenSocket(const OpenSocket&) = delete;
  OpenSocket& operator=(const OpenSocket&) = delete;

 private:
  void Set(int socket) {
    const std::lock_guard lock(watch_.mutex_);
    watch_.socket_ = socket;
  }
  LogindWatch& watch_;
};

LogindWatch::LogindWatch(SessionObserver& observer, SleepNotice sleep)
    : observer_(observer),
      sleep_(sleep),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      thread_([this](const std::stop_token& ended) { Run(ended); }) {}

LogindWatch::~LogindWatch() {
  thread_.request_stop();
  ::eventfd_write(wake_.Get(), 1);
  const std::lock_guard lock(mutex_);
  if (socket_ >= 0) ::shutdown(socket_, SHUT_RDWR);
}

void LogindWatch::Run(const std::stop_token& ended) noexcept {
  BlockSignals();
  while (!ended.stop_requested()) {
    try {
      ServeConnection(ended);
    } catch (const std::exception& error) {
      if (!ended.stop_requested()) LogFailure(error.what());
    }
    pollfd wake{wake_.Get(), POLLIN, 0};
    if (!ended.stop_requested()) ::poll(&wake, 1, kRetryMilliseconds);
  }
}

void LogindWatch::ServeConnection(const std::stop_token& ended) {
  LogindClient client;
  const OpenSocket open(*this, client.Socket());
  if (ended.stop_requested()) return;
  client.Connect();
  HoldSleep(client);
  Serve(client, ended);
}

void LogindWatch::Serve(LogindClient& client, const std::stop_token& ended) {
  bool isStale = true;
  while (!ended.stop_requested()) {
    for (const LogindNotice notice : client.TakeNotices())
      isStale = Handle(notice, client, ended) || isStale;
    if (isStale) isStale = !ReadSeat(client);
    const bool mustRetry = client.IsRunning() && (isStale || LacksInhibitor());
    isStale = Wait(client, mustRetry) || isStale;
    if (LacksInhibitor()) DelaySleep(client);
    NoticeSleepOfOthers();
  }
}

bool LogindWatch::Handle(LogindNotice notice, LogindClient& client, const std::stop_token& ended) {
  if (notice == LogindNotice::kChanged) return true;
  if (notice != LogindNotice::kSleep) {
    HoldSleep(client);
    return notice == LogindNotice::kRestarted;
  }
  if (sleep_ == SleepNotice::kNone) return false;
  isAsleep_ = true;
  observer_.OnSuspend(ended);
  inhibitor_.Reset();
  return false;
}

// A new logind, or a new connection to it, does not tell the end of a sleep that was announced
// before, and does not know the inhibitor that was granted before.
void LogindWatch::HoldSleep(LogindClient& client) {
  if (sleep_ != SleepNotice::kNone) DelaySleep(client);
  if (!std::exchange(isAsleep_, false)) return;
  clock_.HasSlept();
  observer_.OnResume(true);
}

bool LogindWatch::LacksInhibitor() const {
  return sleep_ != SleepNotice::kNone && !isAsleep_ && !inhibitor_.IsOpen();
}

void LogindWatch::DelaySleep(LogindClient& client) {
  if (!client.IsRunning()) return;
  try {
    inhibitor_ = client.DelaySleep();
    isSleepUndelayed_ = false;
  } catch (const BusError& error) {
    inhibitor_.Reset();
    if (std::exchange(isSleepUndelayed_, true)) return;
    LogLine(std::string("sleep cannot be delayed: ") + error.what());
  }
}

bool LogindWatch::ReadSeat(LogindClient& client) {
  if (!client.IsRunning()) {
    LogFailure("it does not run");
    return false;
  }
  try {
    SeatReading reading = client.ReadSeat();
    leaders_ = std::move(reading.leaders);
    hasFailed_ = false;
    observer_.OnSeat(reading.state);
    return true;
  } catch (const BusError& error) {
    leaders_.clear();
    LogFailure(error.what());
    return false;
  }
}

bool LogindWatch::Wait(const LogindClient& client, bool mustRetry) {
  std::vector<pollfd> entries = {
      client.ToPoll(), {wake_.Get(), POLLIN, 0}, {clock_.Descriptor(), POLLIN, 0}};
  const auto own = static_cast<std::ptrdiff_t>(entries.size());
  for (const FileDescriptor& leader : leaders_)
    entries.push_back({leader.Get(), POLLIN, 0});
  int limit = mustRetry ? kRetryMilliseconds : kNoLimit;
  if (client.HasNotices()) limit = 0;
  ::poll(entries.data(), entries.size(), limit);
  return std::any_of(entries.begin() + own, entries.end(),
                     [](const pollfd& each) { return each.revents != 0; });
}

// The kernel sleeps without logind, too, when it is told directly; and logind may have announced a
// sleep before it was listened to. That it announces an end does not mean that the machine has
// slept.
void LogindWatch::NoticeSleepOfOthers() {
  const bool hasSlept = clock_.HasSlept();
  if (hasSlept && !isAsleep_ && sleep_ == SleepNotice::kBeforeAndAfter) observer_.OnResume(false);
}

// Once for each time that logind is missing: a machine may have none.
void LogindWatch::LogFailure(const char* what) {
  if (!std::exchange(hasFailed_, true)) LogLine(std::string("logind cannot be asked: ") + what);
}

}  // namespace platform
