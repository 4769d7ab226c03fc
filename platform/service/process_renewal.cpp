#include "platform/service/process_renewal.h"

#include <sysexits.h>
#include <unistd.h>

#include <atomic>
#include <mutex>
#include <optional>

#include "platform/kernel/log.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::minutes kLeastLife{1};

std::atomic<bool> isRenewalWanted{false};

steady_clock::time_point FirstSign(steady_clock::time_point now) {
  static std::mutex mutex;
  static std::optional<steady_clock::time_point> first;
  const std::lock_guard lock(mutex);
  if (!first) first = now;
  return *first;
}

}  // namespace

void SetRenewalWanted(bool isWanted) {
  isRenewalWanted = isWanted;
}

void NoteSignOfLife(steady_clock::time_point now) {
  if (now - FirstSign(now) < kLeastLife || !isRenewalWanted) return;
  LogLine("service: the process ends for the new one that is wanted");
  ::_exit(EX_TEMPFAIL);
}

}  // namespace platform
