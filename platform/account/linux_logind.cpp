#include "platform/account/linux_logind.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <new>
#include <utility>

#include "platform/account/linux_accounts.h"
#include "platform/kernel/encoding.h"

namespace platform {
namespace {

constexpr const char* kService = "org.freedesktop.login1";
constexpr const char* kManagerPath = "/org/freedesktop/login1";
constexpr const char* kManager = "org.freedesktop.login1.Manager";
constexpr const char* kSeatPath = "/org/freedesktop/login1/seat/seat0";
constexpr const char* kSeat = "org.freedesktop.login1.Seat";
constexpr const char* kSession = "org.freedesktop.login1.Session";
constexpr const char* kBus = "org.freedesktop.DBus";

constexpr std::uint64_t kCallMicroseconds = 2'000'000;

constexpr const char* kLogindSignals =
    "type='signal',sender='org.freedesktop.login1',path_namespace='/org/freedesktop/login1'";
constexpr const char* kOwnerSignals =
    "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
    "member='NameOwnerChanged',arg0='org.freedesktop.login1'";

// Whether the error says that the object is not there, which is no failure of logind.
bool IsGone(const BusError& error) {
  return error.Name() == SD_BUS_ERROR_UNKNOWN_OBJECT ||
         error.Name() == "org.freedesktop.login1.NoSuchSession";
}

// False when the process has ended. Without a descriptor for it (0 is no process, and old kernels
// have none) logind alone says when the session ends.
bool WatchLeader(std::uint32_t process, std::vector<FileDescriptor>& leaders) {
  if (process == 0) return true;
  FileDescriptor leader(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
  if (!leader.IsOpen()) return errno != ESRCH;
  pollfd ended{leader.Get(), POLLIN, 0};
  if (::poll(&ended, 1, 0) != 0) return false;
  leaders.push_back(std::move(leader));
  return true;
}

}  // namespace

LogindClient::LogindClient() {
  sd_bus* bus = nullptr;
  CheckBus(::sd_bus_open_system(&bus), "the system bus");
  bus_.reset(bus);
}

int LogindClient::Socket() const {
  return ::sd_bus_get_fd(bus_.get());
}

void LogindClient::Connect() {
  sd_bus* const bus = bus_.get();
  ::sd_bus_set_method_call_timeout(bus, kCallMicroseconds);
  CheckBus(::sd_bus_add_match(bus, nullptr, kLogindSignals, OnLogindSignal, this), "AddMatch");
  CheckBus(::sd_bus_add_match(bus, nullptr, kOwnerSignals, OnOwnerChanged, this), "AddMatch");
  // While logind does not run it has no name; its start is notified.
  BusFault fault;
  sd_bus_message* reply = nullptr;
  const int result = ::sd_bus_call_method(bus, kBus, "/org/freedesktop/DBus", kBus, "GetNameOwner",
                                          fault.Out(), &reply, "s", kService);
  const BusMessage owned(reply);
  if (::sd_bus_error_has_name(&fault.Reply(), SD_BUS_ERROR_NAME_HAS_NO_OWNER) > 0) return;
  fault.Check(result, "GetNameOwner");
  const char* owner = "";
  CheckBus(::sd_bus_message_read(reply, "s", &owner), "GetNameOwner");
  owner_ = owner;
}

int LogindClient::OnLogindSignal(sd_bus_message* message, void* self, sd_bus_error*) noexcept try {
  auto& client = *static_cast<LogindClient*>(self);
  if (IsFrom(message, client.owner_)) client.TakeLogindSignal(message);
  return 0;
} catch (const std::bad_alloc&) {
  return -ENOMEM;
}

int LogindClient::OnOwnerChanged(sd_bus_message* message, void* self, sd_bus_error*) noexcept try {
  if (IsFrom(message, kBus)) static_cast<LogindClient*>(self)->TakeOwnerChange(message);
  return 0;
} catch (const std::bad_alloc&) {
  return -ENOMEM;
}

void LogindClient::TakeLogindSignal(sd_bus_message* message) {
  if (::sd_bus_message_is_signal(message, kManager, "PrepareForSleep") <= 0) {
    notices_.push_back(LogindNotice::kChanged);
    return;
  }
  int begins = 0;
  if (::sd_bus_message_read(message, "b", &begins) < 0) return;
  notices_.push_back(begins != 0 ? LogindNotice::kSleep : LogindNotice::kWake);
}

void LogindClient::TakeOwnerChange(sd_bus_message* message) {
  const char* name = nullptr;
  const char* before = nullptr;
  const char* after = nullptr;
  if (::sd_bus_message_read(message, "sss", &name, &before, &after) < 0) return;
  owner_ = after;
  if (!owner_.empty()) notices_.push_back(LogindNotice::kRestarted);
}

std::vector<LogindNotice> LogindClient::TakeNotices() {
  int result = 0;
  do {
    result = ::sd_bus_process(bus_.get(), nullptr);
    CheckBus(result, "the system bus");
  } while (result > 0);
  return std::exchange(notices_, {});
}

pollfd LogindClient::ToPoll() const {
  const int events = ::sd_bus_get_events(bus_.get());
  return {Socket(), static_cast<short>(events < 0 ? 0 : events), 0};
}

// A call reads what arrives before its reply into the connection's own queue. All calls have ended,
// so no other time limit is running.
bool LogindClient::HasNotices() const {
  std::uint64_t due = UINT64_MAX;
  return ::sd_bus_get_timeout(bus_.get(), &due) < 0 || due == 0;
}

BusMessage LogindClient::Property(const std::string& path, const char* interface, const char* name,
                                  const char* type) {
  BusFault fault;
  sd_bus_message* reply = nullptr;
  const int result = ::sd_bus_get_property(bus_.get(), kService, path.c_str(), interface, name,
                                           fault.Out(), &reply, type);
  BusMessage owned(reply);
  fault.Check(result, name);
  return owned;
}

std::string LogindClient::Text(const std::string& session, const char* name) {
  const BusMessage reply = Property(session, kSession, name, "s");
  const char* text = "";
  CheckBus(::sd_bus_message_read(reply.get(), "s", &text), name);
  return text;
}

std::optional<SeatSession> LogindClient::ReadSession(const std::string& id, const std::string& path,
                                                     std::vector<FileDescriptor>& leaders) {
  // All classes of people's sessions begin so; others are greeters, locks and background work. A
  // session that is closing has been left, and goes on for processes that were left behind.
  if (!Text(path, "Class").starts_with("user") || Text(path, "State") == "closing") return {};
  std::uint32_t leader = 0;
  int locked = 0;
  CheckBus(::sd_bus_message_read(Property(path, kSession, "Leader", "u").get(), "u", &leader),
           "Leader");
  CheckBus(::sd_bus_message_read(Property(path, kSession, "LockedHint", "b").get(), "b", &locked),
           "LockedHint");
  SeatSession session{Wide(id), AccountName(Text(path, "Name")), locked != 0};
  if (!WatchLeader(leader, leaders)) return {};
  return session;
}

SeatReading LogindClient::ReadSeat() {
  SeatReading reading;
  const char* id = nullptr;
  const char* path = nullptr;
  const BusMessage active = Property(kSeatPath, kSeat, "ActiveSession", "(so)");
  CheckBus(::sd_bus_message_read(active.get(), "(so)", &id, &path), "ActiveSession");
  const std::wstring activeId = Wide(id);
  const BusMessage sessions = Property(kSeatPath, kSeat, "Sessions", "a(so)");
  CheckBus(::sd_bus_message_enter_container(sessions.get(), 'a', "(so)"), "Sessions");
  while (::sd_bus_message_read(sessions.get(), "(so)", &id, &path) > 0) {
    try {
      if (auto session = ReadSession(id, path, reading.leaders))
        reading.state.sessions.push_back(*std::move(session));
    } catch (const BusError& error) {
      if (!IsGone(error)) throw;
    }
  }
  if (reading.state.Find(activeId) != nullptr) reading.state.activeId = activeId;
  return reading;
}

FileDescriptor LogindClient::DelaySleep() {
  BusFault fault;
  sd_bus_message* reply = nullptr;
  const int result = ::sd_bus_call_method(
      bus_.get(), kService, kManagerPath, kManager, "Inhibit", fault.Out(), &reply, "ssss", "sleep",
      program_invocation_short_name, "Windows are notified before the machine sleeps", "delay");
  const BusMessage owned(reply);
  int borrowed = -1;
  fault.Check(result, "Inhibit");
  CheckBus(::sd_bus_message_read(reply, "h", &borrowed), "Inhibit");
  return FileDescriptor(::fcntl(borrowed, F_DUPFD_CLOEXEC, 0));
}

}  // namespace platform
