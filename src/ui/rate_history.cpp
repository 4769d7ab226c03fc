#include "ui/rate_history.h"

#include <algorithm>
#include <numeric>

namespace quillgate {
namespace {

// From a sum over eight seconds to 1024 bytes per second.
constexpr int kRateShift = 13;

}  // namespace

bool RateHistory::IsOfNewSession(const SessionReading& reading) const {
  return reading.seconds < previous_.seconds || reading.bytesReceived < previous_.bytesReceived;
}

void RateHistory::Add(const SessionReading& reading) {
  if (previous_.bytesReceived == 0 && previous_.bytesSent == 0) {
    received_.fill(0);
    sent_.fill(0);
  } else {
    std::shift_right(received_.begin(), received_.end(), 1);
    std::shift_right(sent_.begin(), sent_.end(), 1);
  }
  received_.front() = reading.bytesReceived - previous_.bytesReceived;
  sent_.front() = reading.bytesSent - previous_.bytesSent;
  previous_ = reading;
}

std::uint64_t RateHistory::RateOf(const Ring& ring) {
  return std::accumulate(ring.begin(), ring.end(), std::uint64_t{0}) >> kRateShift;
}

}  // namespace quillgate
