#include "platform/account/session_watch.h"

#include "platform/account/linux_logind_watch.h"
#include "platform/kernel/seam.h"

namespace platform {
namespace {

Seam<SessionWatchSource>& Replacement() {
  static auto& seam = *new Seam<SessionWatchSource>;
  return seam;
}

}  // namespace

std::unique_ptr<SessionWatch> WatchSessions(SessionObserver& observer, SleepNotice sleep) {
  const SessionWatchSource source = Replacement().Get();
  if (source) return source(observer, sleep);
  return std::make_unique<LogindWatch>(observer, sleep);
}

void SetSessionWatchSource(SessionWatchSource source) {
  Replacement().Set(std::move(source));
}

}  // namespace platform
