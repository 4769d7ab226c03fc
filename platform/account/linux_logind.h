// logind as a process of this machine meets it on the system bus: reads who is at the seat,
// receives notices of changes and of sleep, and delays sleep. For one thread. Failures throw
// BusError; a client that has thrown from Connect or TakeNotices is of no more use.
#pragma once

#include <poll.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/account/seat_state.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_bus.h"

namespace platform {

enum class LogindNotice {
  kChanged,    // the seat is to be read again
  kRestarted,  // logind has started: what the one before has granted may be gone
  kSleep,      // the machine is about to sleep
  kWake,       // it is awake again
};

struct SeatReading {
  SeatState state;
  // Each becomes readable when the process that leads one of the sessions has ended.
  std::vector<FileDescriptor> leaders;
};

class LogindClient {
 public:
  // Does not wait. The other functions may wait for the bus and for logind, until the connection's
  // socket is shut down at the latest.
  LogindClient();
  LogindClient(const LogindClient&) = delete;
  LogindClient& operator=(const LogindClient&) = delete;

  int Socket() const;
  void Connect();
  // Whether there is a logind. What needs one is not asked of the bus otherwise, which would try to
  // start it each time.
  bool IsRunning() const { return !owner_.empty(); }

  // What has arrived since the last call. Does not wait.
  std::vector<LogindNotice> TakeNotices();
  // What to wait for until the next TakeNotices, and whether there is no need to wait.
  pollfd ToPoll() const;
  bool HasNotices() const;

  // The sessions of people at the seat: no greeters, none that is ending or whose leader has ended.
  SeatReading ReadSeat();

  // The machine does not sleep while this is open, or not for some seconds (InhibitDelayMaxSec in
  // logind.conf).
  FileDescriptor DelaySleep();

 private:
  static int OnLogindSignal(sd_bus_message* message, void* self, sd_bus_error* error) noexcept;
  static int OnOwnerChanged(sd_bus_message* message, void* self, sd_bus_error* error) noexcept;
  void TakeLogindSignal(sd_bus_message* message);
  void TakeOwnerChange(sd_bus_message* message);

  BusMessage Property(const std::string& path, const char* interface, const char* name,
                      const char* type);
  std::string Text(const std::string& session, const char* name);
  std::optional<SeatSession> ReadSession(const std::string& id, const std::string& path,
                                         std::vector<FileDescriptor>& leaders);

  BusConnection bus_;
  // The bus name of the running logind; its signals alone count. Empty: it does not run.
  std::string owner_;
  std::vector<LogindNotice> notices_;
};

}  // namespace platform
