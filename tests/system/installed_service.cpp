#include "system/installed_service.h"

#include <signal.h>

#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <vector>

namespace service {
namespace {

using std::chrono_literals::operator""us;
using std::chrono_literals::operator""ms;

std::vector<pid_t> ProcessesOf(const std::filesystem::path& executable) {
  std::vector<pid_t> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const pid_t process = std::atoi(entry.path().filename().c_str());
    std::error_code error;
    const auto runs = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (process != 0 && !error && runs == executable) found.push_back(process);
  }
  return found;
}

}  // namespace

InstalledService::InstalledService(const lab::NetworkNamespace& place) : place_(place) {
  for (const char* file : {"qgserv", "winsc", "qgdbeng.so", "QGIpHook.so"})
    Copy(file);
  Must("./qgserv Install");
  Sql("INSERT INTO Settings VALUES ('845', 'WINDOWS'); CREATE TABLE WlNpData (Key, Value);"
      "INSERT INTO WlNpData VALUES ('UserName', 'anna');");
}

InstalledService::~InstalledService() {
  KillProcesses();
}

void InstalledService::Copy(const std::string& file) const {
  const auto build = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  std::filesystem::copy(build / file, Folder() / file);
}

void InstalledService::LogOnToSystem(bool mayConnect) {
  const std::string hours(168, mayConnect ? '0' : '1');
  Sql("DELETE FROM Users_Windows; INSERT INTO Users_Windows VALUES"
      " ('anna', '', 'NO', '1', '0', 'NO', '1', '0', '" +
      hours + "', '0');");
}

bool InstalledService::Start(const std::string& awaitedText) {
  const std::size_t before = Log().size();
  Must("./winsc start qgserv");
  for (int i = 0; i < 400; ++i) {
    if (Log().find(awaitedText, before) != std::string::npos) return true;
    std::this_thread::sleep_for(50ms);
  }
  return false;
}

void InstalledService::Kill() {
  if (KillProcesses() == 0) throw std::runtime_error("the service has no process: " + Log());
  // A killed process and a start that has not noticed yet hold the service's lock a little longer.
  for (int i = 0; Run("./winsc query qgserv | grep stopped") != 0; ++i) {
    if (i == 1000) throw std::runtime_error("the killed service does not count as stopped");
    std::this_thread::sleep_for(1ms);
  }
}

void InstalledService::KillWhileStarting(std::chrono::microseconds after) {
  Must("(./winsc start qgserv >/dev/null 2>&1 &)");
  for (int i = 0; i < 20'000 && ProcessesOf(Folder() / "qgserv").empty(); ++i)
    std::this_thread::sleep_for(500us);
  std::this_thread::sleep_for(after);
  Kill();
}

int InstalledService::KillProcesses() const {
  int killed = 0;
  std::vector<pid_t> found;
  while (!(found = ProcessesOf(Folder() / "qgserv")).empty()) {
    for (const pid_t process : found)
      killed += ::kill(process, SIGKILL) == 0 ? 1 : 0;
    std::this_thread::sleep_for(50ms);
  }
  return killed;
}

std::string InstalledService::Sql(const std::string& statements) const {
  return folder_.StockSqlite(".timeout 5000\n" + statements);
}

int InstalledService::Run(const std::string& command, std::string* output) const {
  const std::string script = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM; cd " +
                             Folder().string() + "; export WIN_ROOT=$PWD/root; { " + command +
                             "; } 2>&1; echo status=$?";
  const std::string printed = place_.Shell(script);
  const std::size_t at = printed.rfind("status=");
  if (output != nullptr) *output = printed.substr(0, at);
  return std::atoi(printed.c_str() + at + 7);
}

std::string InstalledService::Must(const std::string& command) const {
  std::string output;
  if (Run(command, &output) != 0) throw std::runtime_error(command + ": " + output);
  return output;
}

}  // namespace service
