// Measures the running session: since when the gate has been open, and what the chosen adapter has
// carried since. Owned by the session object and used under its lock.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "accounts/logon_session.h"
#include "usage/automation_date.h"
#include "usage/network_adapter.h"

namespace quillgate {

// A session as far as it has come; one row of the connection log.
struct SessionRecord {
  std::wstring user;
  std::uint64_t seconds = 0;
  std::uint64_t bytesSent = 0;
  std::uint64_t bytesReceived = 0;
  DATE startDate = kInvalidDate;
  // By which it was longer than its seconds; no row has room for it.
  std::uint32_t restMilliseconds = 0;
};

struct OnlineTime {
  std::uint32_t seconds = 0;
  std::uint32_t restMilliseconds = 0;
};

class SessionMeter {
 public:
  // Online from the start, though nothing has been noted yet.
  explicit SessionMeter(const LogonSession& logon) : logon_(logon) {}

  // The machine's measured adapter; null when it has none, and no bytes are counted then.
  void SetAdapter(std::unique_ptr<NetworkAdapter> adapter);
  // Measures another card from now on. Without an adapter nothing happens.
  void SetAdapterName(std::wstring serviceName);

  // The first half of a start: notes the adapter's counters. To be called before the gate opens, so
  // that the session's first packets count.
  void NoteCounters();
  // The second half: online, from now on.
  void NoteTime();
  void End();

  bool IsOnline() const { return online_; }

  // All are 0 while nobody is logged on or the gate is closed. Seconds come from the tick
  // count and are off by the start tick once that count has wrapped; bytes start from the low 32
  // bits of the adapter's counter.
  OnlineTime TimeOnline() const;
  std::uint32_t SecondsOnline() const { return TimeOnline().seconds; }
  std::uint64_t BytesReceived() const;
  std::uint64_t BytesSent() const;

  // When the gate was last opened, local time; kInvalidDate before the first time.
  DATE StartDate() const { return startDate_; }

  // The running session of that user.
  SessionRecord Record(const std::wstring& user) const;

 private:
  bool IsMeasuring() const;

  const LogonSession& logon_;
  std::unique_ptr<NetworkAdapter> adapter_;
  NetworkAdapter::Start start_;  // the counters
  DATE startDate_ = kInvalidDate;
  DWORD startTick_ = 0;
  bool online_ = true;
};

}  // namespace quillgate
