#include "logind/fake_logind.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace logind {
namespace {

using Lock = std::lock_guard<std::mutex>;

constexpr const char* kManagerPath = "/org/freedesktop/login1";
constexpr const char* kManager = "org.freedesktop.login1.Manager";

std::string PathOf(const std::string& id) {
  return id.empty() ? "/" : "/org/freedesktop/login1/session/" + id;
}

platform::BusConnection OpenBus() {
  sd_bus* bus = nullptr;
  platform::CheckBus(::sd_bus_open_system(&bus), "open");
  return platform::BusConnection(bus);
}

}  // namespace

std::string FakeLogind::WhyNot() {
  return std::system("command -v dbus-daemon >/dev/null") == 0 ? "" : "no dbus-daemon";
}

FakeLogind::FakeLogind() {
  StartBus();
  Open();
  thread_ = std::thread([this] { Serve(); });
}

FakeLogind::~FakeLogind() {
  ended_ = true;
  thread_.join();
  bus_.reset();
  ::unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
  if (daemon_ > 0) ::kill(daemon_, SIGKILL);
  std::filesystem::remove_all(folder_);
}

void FakeLogind::StartBus() {
  std::string folder = (std::filesystem::temp_directory_path() / "bus-XXXXXX").native();
  if (::mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no folder " + folder);
  folder_ = folder;
  const std::string address = "unix:path=" + folder + "/socket";
  // It listens when it prints its number.
  const std::string command = "dbus-daemon --session --fork --print-pid=1 --address=" + address;
  std::FILE* const output = ::popen(command.c_str(), "r");
  const int numbers = std::fscanf(output, "%d", &daemon_);
  ::pclose(output);
  if (numbers != 1) throw std::runtime_error("dbus-daemon does not start");
  ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
}

void FakeLogind::Open() {
  bus_ = OpenBus();
  platform::CheckBus(::sd_bus_add_filter(bus_.get(), nullptr, OnMessage, this), "filter");
  // From the connection before, whose end the bus may not have noticed yet.
  constexpr std::uint64_t kTakeOver = SD_BUS_NAME_ALLOW_REPLACEMENT | SD_BUS_NAME_REPLACE_EXISTING;
  platform::CheckBus(::sd_bus_request_name(bus_.get(), "org.freedesktop.login1", kTakeOver),
                     "name");
}

void FakeLogind::Serve() {
  while (!ended_) {
    pollfd entry{-1, POLLIN, 0};
    {
      const Lock lock(mutex_);
      while (::sd_bus_process(bus_.get(), nullptr) > 0) {
      }
      entry.fd = ::sd_bus_get_fd(bus_.get());
    }
    ::poll(&entry, 1, 5);
  }
}

// Called under the mutex, as all of the connection's work is.
int FakeLogind::OnMessage(sd_bus_message* message, void* self, sd_bus_error*) {
  auto& logind = *static_cast<FakeLogind*>(self);
  if (::sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "Get") > 0) {
    return logind.AnswerProperty(message);
  }
  const bool inhibits = ::sd_bus_message_is_method_call(message, kManager, "Inhibit") > 0;
  return inhibits ? logind.Inhibit(message) : 0;
}

int FakeLogind::AnswerProperty(sd_bus_message* message) {
  const char* interface = nullptr;
  const char* name = nullptr;
  ::sd_bus_message_read(message, "ss", &interface, &name);
  const std::string path = ::sd_bus_message_get_path(message);
  sd_bus_message* reply = nullptr;
  ::sd_bus_message_new_method_return(message, &reply);
  const platform::BusMessage owned(reply);
  const bool isSeat = path == "/org/freedesktop/login1/seat/seat0";
  if ((isSeat ? AppendSeat(reply, name) : AppendSession(reply, path, name)) >= 0) {
    return ::sd_bus_send(nullptr, reply, nullptr);
  }
  return ::sd_bus_reply_method_errorf(message, SD_BUS_ERROR_UNKNOWN_OBJECT, "no %s", path.c_str());
}

int FakeLogind::AppendSeat(sd_bus_message* reply, const std::string& name) {
  if (name == "ActiveSession") {
    return ::sd_bus_message_append(reply, "v", "(so)", active_.c_str(), PathOf(active_).c_str());
  }
  ::sd_bus_message_open_container(reply, 'v', "a(so)");
  ::sd_bus_message_open_container(reply, 'a', "(so)");
  for (const auto& [id, session] : sessions_) {
    if (session.seat != "seat0") continue;
    ::sd_bus_message_append(reply, "(so)", id.c_str(), PathOf(id).c_str());
  }
  ::sd_bus_message_close_container(reply);
  return ::sd_bus_message_close_container(reply);
}

int FakeLogind::AppendSession(sd_bus_message* reply, const std::string& path,
                              const std::string& name) {
  const auto found = sessions_.find(path.substr(path.rfind('/') + 1));
  if (found == sessions_.end()) return -ENOENT;
  const Session& session = found->second;
  if (name == "LockedHint") return ::sd_bus_message_append(reply, "v", "b", session.locked ? 1 : 0);
  if (name == "Leader") return ::sd_bus_message_append(reply, "v", "u", session.leader);
  const std::string& text = name == "Name"    ? session.user
                            : name == "Class" ? session.sessionClass
                                              : session.state;
  return ::sd_bus_message_append(reply, "v", "s", text.c_str());
}

int FakeLogind::Inhibit(sd_bus_message* message) {
  int ends[2] = {-1, -1};
  if (::pipe2(ends, O_CLOEXEC) != 0) return -errno;
  delay_.Reset(ends[0]);
  const platform::FileDescriptor given(ends[1]);
  delayer_ = ::sd_bus_message_get_sender(message);
  return ::sd_bus_reply_method_return(message, "h", given.Get());
}

void FakeLogind::SignalManager(const char* member, const char* types, int argument) {
  ::sd_bus_emit_signal(bus_.get(), kManagerPath, kManager, member, types, argument);
  ::sd_bus_flush(bus_.get());
}

void FakeLogind::Put(const std::string& id, const Session& session, const std::string& active) {
  const Lock lock(mutex_);
  sessions_[id] = session;
  active_ = active;
  SignalManager("PropertiesChanged", "", 0);
}

void FakeLogind::Remove(const std::string& id) {
  const Lock lock(mutex_);
  sessions_.erase(id);
  SignalManager("SessionRemoved", "", 0);
}

void FakeLogind::Restart() {
  const Lock lock(mutex_);
  delay_.Reset();
  Open();
}

void FakeLogind::SignalSleep(bool begins) {
  const Lock lock(mutex_);
  SignalManager("PrepareForSleep", "b", begins ? 1 : 0);
}

void FakeLogind::ForgeSleep(bool begins) {
  const platform::BusConnection bus = OpenBus();
  const Lock lock(mutex_);
  sd_bus_message* signal = nullptr;
  ::sd_bus_message_new_signal(bus.get(), &signal, kManagerPath, kManager, "PrepareForSleep");
  const platform::BusMessage owned(signal);
  ::sd_bus_message_append(signal, "b", begins ? 1 : 0);
  ::sd_bus_message_set_destination(signal, delayer_.c_str());
  ::sd_bus_send(bus.get(), signal, nullptr);
  // Answered when the bus has passed on what was sent before.
  constexpr const char* kBus = "org.freedesktop.DBus";
  platform::CheckBus(::sd_bus_call_method(bus.get(), kBus, "/org/freedesktop/DBus", kBus, "GetId",
                                          nullptr, nullptr, ""),
                     "GetId");
}

bool FakeLogind::AwaitDelay(bool isDelayed) {
  for (int i = 0; i < 1000; ++i) {
    {
      const Lock lock(mutex_);
      pollfd closed{delay_.Get(), POLLIN, 0};
      if ((delay_.IsOpen() && ::poll(&closed, 1, 0) == 0) == isDelayed) return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

}  // namespace logind
