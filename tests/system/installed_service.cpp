#include "system/installed_service.h"

#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace service {
namespace {

constexpr std::chrono::milliseconds kPoll{50};
constexpr int kPolls = 400;

std::filesystem::path BuildFolder() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

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
  std::string pattern = (std::filesystem::temp_directory_path() / "service-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = pattern;
  program_ = folder_ / "program";
  std::filesystem::create_directory(program_);
  for (const char* file : {"qgserv", "winsc", "qgdbeng.so", "QGIpHook.so"})
    std::filesystem::copy(BuildFolder() / file, program_ / file);
  Must("./qgserv Install");
  Sql("INSERT INTO Settings VALUES ('845', 'WINDOWS'); CREATE TABLE WlNpData (Key, Value);");
}

InstalledService::~InstalledService() {
  KillProcesses();
  std::error_code error;
  std::filesystem::remove_all(folder_, error);
}

void InstalledService::LogOnToSystem(const Account& account) {
  const std::string hours(168, account.allowedAtAnyHour ? '0' : '1');
  Sql("DELETE FROM WlNpData; INSERT INTO WlNpData VALUES ('UserName', '" + account.name + "');" +
      "DELETE FROM Users_Windows; INSERT INTO Users_Windows VALUES ('" + account.name +
      "', '', 'NO', '1', '0', 'NO', '1', '0', '" + hours + "', '0');");
}

bool InstalledService::Start(const std::string& awaitedText) {
  const std::size_t before = Log().size();
  Must("./winsc start qgserv");
  for (int i = 0; i < kPolls; ++i) {
    if (Log().find(awaitedText, before) != std::string::npos) return true;
    std::this_thread::sleep_for(kPoll);
  }
  return false;
}

void InstalledService::Stop() {
  Must("./winsc stop qgserv");
}

void InstalledService::Kill() {
  if (KillProcesses() == 0) throw std::runtime_error("the service has no process: " + Log());
}

void InstalledService::KillWhileStarting(std::chrono::microseconds after) {
  // The start of a service killed before still holds the service's lock until it has noticed.
  for (int i = 0; i < 20'000 && !ProcessesOf(program_ / "winsc").empty(); ++i)
    std::this_thread::sleep_for(std::chrono::microseconds(500));
  Must("(./winsc start qgserv >/dev/null 2>&1 &)");
  for (int i = 0; i < 20'000 && ProcessesOf(program_ / "qgserv").empty(); ++i)
    std::this_thread::sleep_for(std::chrono::microseconds(500));
  std::this_thread::sleep_for(after);
  Kill();
}

int InstalledService::KillProcesses() const {
  int killed = 0;
  std::vector<pid_t> found;
  while (!(found = ProcessesOf(program_ / "qgserv")).empty()) {
    for (const pid_t process : found)
      killed += ::kill(process, SIGKILL) == 0 ? 1 : 0;
    std::this_thread::sleep_for(kPoll);
  }
  return killed;
}

std::string InstalledService::State() const {
  std::string output;
  Run("./winsc query qgserv", &output);
  return output;
}

std::string InstalledService::Log() const {
  return ReadFile(folder_ / "root/services/qgserv.log");
}

std::string InstalledService::Sql(const std::string& statement) const {
  return Must("sqlite3 -cmd '.timeout 5000' quillgate.dat \"" + statement + "\"");
}

int InstalledService::Run(const std::string& command, std::string* output) const {
  const std::string script = "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM; export WIN_ROOT=" +
                             (folder_ / "root").string() + "; cd " + program_.string() + "; { " +
                             command + "; } 2>&1; echo status=$?";
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
