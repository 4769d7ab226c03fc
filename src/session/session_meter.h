// Measures the running session: the time since the gate was opened, and the bytes that the chosen
// adapter has transferred since. Owned by the session object and used under its lock.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "accounts/logon_session.h"
#include "usage/automation_date.h"
#include "usage/network_adapter.h"

namespace quillgate {

// A session up to one moment; one row of the connection log.
struct SessionRecord {
  std::wstring user;
  std::uint64_t seconds = 0;
  std::uint64_t bytesSent = 0;
  std::uint64_t bytesReceived = 0;
  DATE startDate = kInvalidDate;
  // Milliseconds beyond the whole seconds; the row has no column for them.
  std::uint32_t restMilliseconds = 0;
};

struct OnlineTime {
  std::uint32_t seconds = 0;
  std::uint32_t restMilliseconds = 0;
};

class SessionMeter {
 public:
  // Online initially, although nothing has been stored yet.
  explicit SessionMeter(const LogonSession& logon) : logon_(logon) {}

  // The adapter to measure; null when the machine has none: no bytes are counted then.
  void SetAdapter(std::unique_ptr<NetworkAdapter> adapter);
  // Switches to another card; what the running session has counted so far is kept. Does nothing
  // without an adapter.
  void SetAdapterName(std::wstring serviceName);

  // First step of a start: stores the adapter's counters. Called before the gate opens, so that the
  // session's first packets are counted.
  void NoteCounters();
  // Second step: stores the start time and sets the state to online.
  void NoteTime();
  void End();

  bool IsOnline() const { return online_; }

  // All are 0 while no user is logged on or the gate is closed. Seconds are computed from the tick
  // count and are off by the start tick once that count has wrapped. Bytes start from the low 32
  // bits of the adapter's counter.
  OnlineTime TimeOnline() const;
  std::uint32_t SecondsOnline() const { return TimeOnline().seconds; }
  std::uint64_t BytesReceived() const;
  std::uint64_t BytesSent() const;

  // The local time at which the gate was last opened; kInvalidDate before the first time.
  DATE StartDate() const { return startDate_; }

  // The running session, under this user's name.
  SessionRecord Record(const std::wstring& user) const;

 private:
  bool IsMeasuring() const;

  const LogonSession& logon_;
  std::unique_ptr<NetworkAdapter> adapter_;
  // Of the adapters that the running session was measured on before.
  std::uint64_t carriedSent_ = 0;
  std::uint64_t carriedReceived_ = 0;
  NetworkAdapter::Start start_;  // the counters at the start
  DATE startDate_ = kInvalidDate;
  DWORD startTick_ = 0;
  bool online_ = true;
};

}  // namespace quillgate
