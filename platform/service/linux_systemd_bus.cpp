#include "platform/service/linux_systemd_bus.h"

#include <winerror.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>

#include "platform/kernel/log.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

constexpr char kSystemd[] = "org.freedesktop.systemd1";
constexpr char kManagerPath[] = "/org/freedesktop/systemd1";
constexpr char kManager[] = "org.freedesktop.systemd1.Manager";
constexpr char kUnit[] = "org.freedesktop.systemd1.Unit";

constexpr std::uint64_t kCallMicroseconds = 30'000'000;
constexpr std::uint64_t kPollMicroseconds = 20'000;
constexpr std::chrono::seconds kStartTimeout{30};

DWORD ErrorOfReply(const char* name) {
  struct Row {
    const char* name;
    DWORD error;
  };
  constexpr Row kRows[] = {
      {SD_BUS_ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED},
      {SD_BUS_ERROR_INTERACTIVE_AUTHORIZATION_REQUIRED, ERROR_ACCESS_DENIED},
      {SD_BUS_ERROR_FILE_NOT_FOUND, ERROR_FILE_NOT_FOUND},
      {SD_BUS_ERROR_TIMEOUT, ERROR_SERVICE_REQUEST_TIMEOUT},
      {SD_BUS_ERROR_NO_REPLY, ERROR_SERVICE_REQUEST_TIMEOUT},
      {"org.freedesktop.systemd1.NoSuchUnit", ERROR_FILE_NOT_FOUND},
      {"org.freedesktop.systemd1.UnitMasked", ERROR_SERVICE_DISABLED},
      {"org.freedesktop.systemd1.OnlyByDependency", ERROR_SERVICE_DISABLED},
  };
  for (const Row& row : kRows) {
    if (name != nullptr && std::string_view(name) == row.name) return row.error;
  }
  return ERROR_GEN_FAILURE;
}

// The jobs that have ended.
struct EndedJobs {
  std::string manager;                                      // systemd's own name on the bus
  std::map<std::string, std::string, std::less<>> results;  // by the jobs' object paths
};

int NoteJob(sd_bus_message* message, void* jobs, sd_bus_error*) noexcept {
  auto& ended = *static_cast<EndedJobs*>(jobs);
  std::uint32_t id = 0;
  const char* job = nullptr;
  const char* unit = nullptr;
  const char* result = nullptr;
  if (!IsFrom(message, ended.manager) ||
      ::sd_bus_message_read(message, "uoss", &id, &job, &unit, &result) < 0) {
    return 0;
  }
  try {
    ended.results.insert_or_assign(job, result);
  } catch (...) {
    return -ENOMEM;
  }
  return 0;
}

// Dispatches signals until `outcome` has one, 30 s at most; false when it has none.
bool AwaitJob(sd_bus* bus, const std::function<std::optional<bool>()>& outcome) {
  const auto deadline = steady_clock::now() + kStartTimeout;
  while (steady_clock::now() < deadline) {
    while (::sd_bus_process(bus, nullptr) > 0) {
    }
    if (const auto known = outcome()) return *known;
    const int waited = ::sd_bus_wait(bus, kPollMicroseconds);
    if (waited < 0 && waited != -EINTR) return false;
  }
  return false;
}

}  // namespace

std::unique_ptr<SystemdBus> SystemdBus::Connect(const std::string& address) {
  sd_bus* created = nullptr;
  if (::sd_bus_new(&created) < 0) return nullptr;
  BusConnection bus(created);
  const bool connected = ::sd_bus_set_address(bus.get(), address.c_str()) >= 0 &&
                         ::sd_bus_set_bus_client(bus.get(), 1) >= 0 &&
                         ::sd_bus_set_method_call_timeout(bus.get(), kCallMicroseconds) >= 0 &&
                         ::sd_bus_start(bus.get()) >= 0;
  return connected ? std::unique_ptr<SystemdBus>(new SystemdBus(std::move(bus))) : nullptr;
}

template <class... Arguments>
DWORD SystemdBus::Call(const char* member, BusMessage& reply, const char* types,
                       Arguments... arguments) {
  BusFault fault;
  sd_bus_message* answered = nullptr;
  const int result = ::sd_bus_call_method(bus_.get(), kSystemd, kManagerPath, kManager, member,
                                          fault.Out(), &answered, types, arguments...);
  reply.reset(answered);
  if (result >= 0) return NO_ERROR;
  const sd_bus_error& error = fault.Reply();
  const char* text = error.message != nullptr ? error.message : "no reply";
  LogLine(std::string("systemd: ") + member + ": " + text);
  return ErrorOfReply(error.name);
}

bool SystemdBus::KnowsUnitFile(const std::string& unit) {
  // Asked without Call: that the file is missing is no failure that the log should tell of.
  BusFault fault;
  const int result =
      ::sd_bus_call_method(bus_.get(), kSystemd, kManagerPath, kManager, "GetUnitFileState",
                           fault.Out(), nullptr, "s", unit.c_str());
  return result >= 0 || ErrorOfReply(fault.Reply().name) != ERROR_FILE_NOT_FOUND;
}

bool SystemdBus::IsMachineGoingDown() {
  return Property(kManagerPath, kManager, "SystemState") == "stopping";
}

std::string SystemdBus::Property(const char* path, const char* interface, const char* name) {
  char* text = nullptr;
  if (::sd_bus_get_property_string(bus_.get(), kSystemd, path, interface, name, nullptr, &text) <
      0) {
    return {};
  }
  const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
  return text;
}

bool SystemdBus::IsStarting(const std::string& unit) {
  BusMessage reply;
  const char* path = nullptr;
  if (Call("LoadUnit", reply, "s", unit.c_str()) != NO_ERROR ||
      ::sd_bus_message_read(reply.get(), "o", &path) < 0) {
    return false;
  }
  return Property(path, kUnit, "ActiveState") == "activating" &&
         Property(path, kUnit, "SubState") != "auto-restart";
}

DWORD SystemdBus::Enable(const std::string& unit) {
  BusMessage reply;
  // Neither for this boot only nor in the place of other links.
  return Call("EnableUnitFiles", reply, "asbb", 1, unit.c_str(), 0, 0);
}

DWORD SystemdBus::Disable(const std::string& unit) {
  BusMessage reply;
  // Not for this boot only.
  return Call("DisableUnitFiles", reply, "asb", 1, unit.c_str(), 0);
}

DWORD SystemdBus::Reload() {
  BusMessage reply;
  return Call("Reload", reply, "");
}

DWORD SystemdBus::Start(const std::string& unit, const std::function<bool()>& isTaken) {
  EndedJobs ended;
  sd_bus_slot* slot = nullptr;
  ::sd_bus_match_signal(bus_.get(), &slot, kSystemd, kManagerPath, kManager, "JobRemoved", NoteJob,
                        &ended);
  const std::unique_ptr<sd_bus_slot, decltype(&::sd_bus_slot_unref)> subscription(
      slot, &::sd_bus_slot_unref);
  BusMessage reply;
  DWORD error = Call("Subscribe", reply, "");
  if (error != NO_ERROR) return error;
  const char* const manager = ::sd_bus_message_get_sender(reply.get());
  if (manager != nullptr) ended.manager = manager;
  error = Call("StartUnit", reply, "ss", unit.c_str(), "replace");
  if (error != NO_ERROR) return error;
  const char* job = nullptr;
  if (::sd_bus_message_read(reply.get(), "o", &job) < 0) return ERROR_GEN_FAILURE;
  const bool started = AwaitJob(bus_.get(), [&] {
    const auto result = ended.results.find(job);
    if (result != ended.results.end()) return std::optional(result->second == "done");
    return isTaken() ? std::optional(true) : std::nullopt;
  });
  return started ? NO_ERROR : ERROR_SERVICE_REQUEST_TIMEOUT;
}

DWORD SystemdBus::Stop(const std::string& unit) {
  BusMessage reply;
  return Call("StopUnit", reply, "ss", unit.c_str(), "replace");
}

}  // namespace platform
