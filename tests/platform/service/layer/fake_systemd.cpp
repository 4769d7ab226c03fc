#include "platform/service/layer/fake_systemd.h"

#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace {

constexpr char kBusConfiguration[] =
    "<busconfig><type>session</type><listen>%s</listen><auth>EXTERNAL</auth>"
    "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
    "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
constexpr char kPath[] = "/org/freedesktop/systemd1";
constexpr char kManager[] = "org.freedesktop.systemd1.Manager";
constexpr char kJob[] = "/org/freedesktop/systemd1/job/1";

// -1 when there is no shell.
pid_t Spawn(const std::string& command) {
  std::string shell = "/bin/sh";
  std::string option = "-c";
  std::string text = command;
  char* words[] = {shell.data(), option.data(), text.data(), nullptr};
  pid_t process = -1;
  const int error = ::posix_spawn(&process, shell.c_str(), nullptr, nullptr, words, ::environ);
  return error == 0 ? process : -1;
}

// The rest of the unit file's line that begins so.
std::string Directive(const std::filesystem::path& unit, const std::string& name) {
  std::ifstream file(unit);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(name)) return line.substr(name.size());
  }
  return {};
}

// Null while nobody listens there.
sd_bus* OpenBus(const std::string& address) {
  sd_bus* bus = nullptr;
  ::sd_bus_new(&bus);
  ::sd_bus_set_address(bus, address.c_str());
  ::sd_bus_set_bus_client(bus, 1);
  return ::sd_bus_start(bus) >= 0 ? bus : ::sd_bus_close_unref(bus);
}

// As anybody may, tells whoever has made the call that the job has failed; delivered when this
// returns.
void ForgeFailure(const std::string& address, sd_bus_message* call) {
  sd_bus* bus = OpenBus(address);
  sd_bus_message* signal = nullptr;
  ::sd_bus_message_new_signal(bus, &signal, kPath, kManager, "JobRemoved");
  ::sd_bus_message_append(signal, "uoss", 1, kJob, "any.service", "failed");
  ::sd_bus_message_set_destination(signal, ::sd_bus_message_get_sender(call));
  ::sd_bus_send(bus, signal, nullptr);
  ::sd_bus_message_unref(signal);
  // Answered when the bus has passed on what was sent before.
  ::sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "GetId", nullptr, nullptr, "");
  ::sd_bus_close_unref(bus);
}

// The unit's name in a call with one name or a list of one; empty in a call with neither.
std::string UnitIn(sd_bus_message* call) {
  char type = 0;
  const char* unit = nullptr;
  if (::sd_bus_message_peek_type(call, &type, nullptr) <= 0) return {};
  if (type == 'a') ::sd_bus_message_enter_container(call, 'a', "s");
  return ::sd_bus_message_read(call, "s", &unit) > 0 ? unit : "";
}

}  // namespace

bool FakeSystemd::IsAvailable() {
  return std::system("command -v dbus-daemon >/dev/null") == 0;
}

FakeSystemd::FakeSystemd(const std::filesystem::path& folder) : folder_(folder) {
  std::filesystem::create_directory(Units());
  notices_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::ranges::copy((folder_ / "notify").native(), address.sun_path);
  if (::bind(notices_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("no socket");
  }
  StartBus();
  Connect();
  thread_ = std::thread([this] { Run(); });
}

FakeSystemd::~FakeSystemd() {
  ending_ = true;
  thread_.join();
  ::sd_bus_flush_close_unref(bus_);
  for (const pid_t each : {process_, daemon_}) {
    if (each > 0) ::kill(each, SIGKILL);
    if (each > 0) ::waitpid(each, nullptr, 0);
  }
  ::close(notices_);
}

void FakeSystemd::StartBus() {
  std::string configuration = kBusConfiguration;
  configuration.replace(configuration.find("%s"), 2, Address());
  std::ofstream(folder_ / "bus.conf") << configuration;
  daemon_ = Spawn("exec dbus-daemon --nofork --nopidfile --config-file='" +
                  (folder_ / "bus.conf").string() + "'");
}

void FakeSystemd::Connect() {
  for (int attempt = 0; attempt < 1000; ++attempt) {
    bus_ = OpenBus(Address());
    const bool connected =
        bus_ != nullptr && ::sd_bus_request_name(bus_, "org.freedesktop.systemd1", 0) >= 0 &&
        ::sd_bus_add_filter(
            bus_, nullptr,
            [](sd_bus_message* message, void* self, sd_bus_error*) {
              const int sent = static_cast<FakeSystemd*>(self)->Answer(message);
              const bool forMe = ::sd_bus_message_is_method_call(message, nullptr, nullptr) > 0;
              return sent < 0 || !forMe ? sent : 1;
            },
            this) >= 0;
    if (connected) return;
    bus_ = ::sd_bus_close_unref(bus_);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  throw std::runtime_error("no bus");
}

void FakeSystemd::Run() {
  while (!ending_) {
    while (::sd_bus_process(bus_, nullptr) > 0) {
    }
    ReadNotices();
    NoteExit();
    ::sd_bus_wait(bus_, 2000);
  }
}

int FakeSystemd::Answer(sd_bus_message* call) {
  if (::sd_bus_message_is_method_call(call, nullptr, nullptr) <= 0) return 0;
  const std::string member = ::sd_bus_message_get_member(call);
  const std::lock_guard lock(mutex_);
  if (member == "Subscribe") return ::sd_bus_reply_method_return(call, "");
  if (member == "LoadUnit") return ::sd_bus_reply_method_return(call, "o", "/unit");
  if (member == "Get") {
    const char* interface = nullptr;
    const char* property = nullptr;
    ::sd_bus_message_read(call, "ss", &interface, &property);
    const std::string& state = std::string(property) == "ActiveState" ? active_ : sub_;
    return ::sd_bus_reply_method_return(call, "v", "s", state.c_str());
  }
  const std::string unit = UnitIn(call);
  if (member == "GetUnitFileState") return AnswerUnitFile(call, unit);
  calls_.push_back(member + (unit.empty() ? "" : " " + unit));
  if (member == "EnableUnitFiles") return ::sd_bus_reply_method_return(call, "ba(sss)", 1, 0);
  if (member == "DisableUnitFiles") return ::sd_bus_reply_method_return(call, "a(sss)", 0);
  if (member == "StartUnit") return StartUnit(call, unit);
  if (member == "StopUnit" && process_ > 0) ::kill(process_, SIGTERM);
  return member == "StopUnit" ? ::sd_bus_reply_method_return(call, "o", kJob)
                              : ::sd_bus_reply_method_return(call, "");
}

int FakeSystemd::AnswerUnitFile(sd_bus_message* call, const std::string& unit) {
  if (std::filesystem::exists(Units() / unit)) {
    return ::sd_bus_reply_method_return(call, "s", "disabled");
  }
  return ::sd_bus_reply_method_errorf(call, SD_BUS_ERROR_FILE_NOT_FOUND, "no %s", unit.c_str());
}

int FakeSystemd::StartUnit(sd_bus_message* call, const std::string& unit) {
  const std::filesystem::path file = Units() / unit;
  if (!std::filesystem::exists(file)) {
    return ::sd_bus_reply_method_errorf(call, "org.freedesktop.systemd1.NoSuchUnit", "no %s",
                                        unit.c_str());
  }
  ForgeFailure(Address(), call);
  process_ = Spawn("set -a; . '" + Directive(file, "EnvironmentFile=-") + "'; cd '" +
                   Directive(file, "WorkingDirectory=") + "' && exec env NOTIFY_SOCKET='" +
                   (folder_ / "notify").string() +
                   "' SYSTEMD_EXEC_PID=$$ WATCHDOG_PID=$$ WATCHDOG_USEC=60000000 " +
                   Directive(file, "Environment=") + ' ' + Directive(file, "ExecStart=:"));
  jobRuns_ = true;
  return ::sd_bus_reply_method_return(call, "o", kJob);
}

void FakeSystemd::ReadNotices() {
  char text[256] = {};
  ssize_t bytes = 0;
  while ((bytes = ::recv(notices_, text, sizeof text, 0)) > 0) {
    const std::string notice(text, static_cast<std::size_t>(bytes));
    const std::lock_guard lock(mutex_);
    heard_.push_back(notice);
    if (notice == "READY=1") EndJob("done");
  }
}

void FakeSystemd::NoteExit() {
  if (process_ <= 0 || ::waitpid(process_, nullptr, WNOHANG) != process_) return;
  process_ = -1;
  EndJob("failed");
}

void FakeSystemd::EndJob(const char* result) {
  if (!std::exchange(jobRuns_, false)) return;
  ::sd_bus_emit_signal(bus_, kPath, kManager, "JobRemoved", "uoss", 1, kJob, "any.service", result);
}

std::vector<std::string> FakeSystemd::TakeCalls() {
  const std::lock_guard lock(mutex_);
  return std::exchange(calls_, {});
}

std::vector<std::string> FakeSystemd::Notices() {
  const std::lock_guard lock(mutex_);
  return heard_;
}

void FakeSystemd::SetState(const std::string& active, const std::string& sub) {
  const std::lock_guard lock(mutex_);
  active_ = active;
  sub_ = sub;
}
