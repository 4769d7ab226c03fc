#include "platform/service/process_renewal.h"

#include <sysexits.h>
#include <unistd.h>

#include <atomic>

#include "platform/kernel/log.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::minutes kLeastLife{1};

std::atomic<bool> isRenewalWanted{false};

}  // namespace

void SetRenewalWanted(bool isWanted) {
  isRenewalWanted = isWanted;
}

void NoteSignOfLife(steady_clock::time_point now) {
  static const steady_clock::time_point first = now;
  if (now - first < kLeastLife || !isRenewalWanted) return;
  LogLine("service: the process ends for the new one that is wanted");
  ::_exit(EX_TEMPFAIL);
}

}  // namespace platform
