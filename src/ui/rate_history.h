// The transfer rates of the last eight seconds, from readings of the running session that are taken
// once a second. The process has one, which outlives the sheet that shows the rates. Used on the
// service main thread.
#pragma once

#include <array>
#include <cstdint>

#include "session/session_log.h"

namespace quillgate {

class RateHistory {
 public:
  // Whether the reading belongs to a later session than the previous reading.
  bool IsOfNewSession(const SessionReading& reading) const;

  // Adds the bytes transferred since the previous reading. If that reading had no bytes, all
  // earlier seconds are discarded first.
  void Add(const SessionReading& reading);

  // The next reading is the first of a session.
  void Restart() { previous_ = {}; }

  // The average of the eight seconds in units of 1024 bytes per second, whole numbers.
  std::uint64_t DownloadRate() const { return RateOf(received_); }
  std::uint64_t UploadRate() const { return RateOf(sent_); }

 private:
  static constexpr std::size_t kSeconds = 8;
  using Ring = std::array<std::uint64_t, kSeconds>;  // bytes of each second, newest first

  static std::uint64_t RateOf(const Ring& ring);

  SessionReading previous_;
  Ring received_{};
  Ring sent_{};
};

}  // namespace quillgate
