#include "platform/service/linux_systemd_keeper.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <winsvc.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "platform/kernel/encoding.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/log.h"
#include "platform/kernel/path.h"
#include "platform/kernel/system_error.h"
#include "platform/service/service_files.h"
#include "platform/service/service_program.h"
#include "platform/service/service_state.h"
#include "platform/service/unit_text.h"

namespace platform {
namespace {

constexpr std::size_t kMaxUnitName = 255;

std::filesystem::path RootPath() {
  return std::filesystem::absolute(RootFolder());
}

std::string UnitOf(std::wstring_view name) {
  return UnitStem(name) + ".service";
}

// Empty when there is no such file.
std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

bool IsMade(std::string_view unitText) {
  return unitText.starts_with(kUnitMark);
}

// Replaces the file as a whole: systemd takes an empty unit file, as a crash may leave it, for a
// unit that must never start.
DWORD WriteText(const std::filesystem::path& path, std::string_view text, mode_t mode) {
  const std::string fresh = path.native() + ".new";
  const FileDescriptor file(
      ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, mode));
  const bool written =
      file.IsOpen() && ::fchmod(file.Get(), mode) == 0 &&
      ::write(file.Get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      ::fsync(file.Get()) == 0 && ::rename(fresh.c_str(), path.c_str()) == 0;
  if (written) return NO_ERROR;
  const DWORD error = ErrorFromErrno(errno);
  ::unlink(fresh.c_str());
  LogLine(path.string() + " could not be written");
  return error;
}

// One line of an environment file. Empty for a value that cannot stand on one line.
std::string EnvironmentLine(std::string_view variable) {
  const std::size_t equals = variable.find('=');
  std::string line(variable.substr(0, equals + 1));
  line += '"';
  for (const char letter : variable.substr(equals + 1)) {
    if (static_cast<unsigned char>(letter) < ' ') return {};
    if (std::string_view("\"\\`$").find(letter) != std::string_view::npos) line += '\\';
    line += letter;
  }
  return line + "\"\n";
}

// What the process gets besides the variables of its unit. It finds the machine's root folder
// itself.
std::string EnvironmentText() {
  std::vector<std::string> variables = PassedOnVariables();
  if (!IsMachineRoot()) variables.push_back("WIN_ROOT=" + RootPath().native());
  std::string text;
  for (const std::string& variable : variables)
    text += EnvironmentLine(variable);
  return text;
}

bool HasProcess(const ServiceRecord& record) {
  return ReadState(record.name, record.type).status.dwCurrentState != SERVICE_STOPPED;
}

}  // namespace

std::filesystem::path SystemdKeeper::UnitFile(std::wstring_view name) const {
  return place_.units / UnitOf(name);
}

std::filesystem::path SystemdKeeper::EnvironmentFile(std::wstring_view name) const {
  return place_.environments / (UnitStem(name) + ".environment");
}

DWORD SystemdKeeper::Configure(const ServiceRecord& record, bool hasNewStartType) {
  const std::string unit = UnitOf(record.name);
  if (unit.size() > kMaxUnitName) return ERROR_INVALID_NAME;
  const std::filesystem::path file = UnitFile(record.name);
  const std::string before = ReadText(file);
  if (!IsMade(before) && (!before.empty() || bus_->KnowsUnitFile(unit))) {
    LogLine("the machine has a unit " + unit + " of its own");
    return ERROR_SERVICE_EXISTS;
  }
  const std::vector<std::string> words = ProgramWords(record);
  if (words.empty()) return ERROR_INVALID_PARAMETER;
  // systemd starts the program without looking who could have changed it.
  if (RequireTrustedProgram(record, words) == ERROR_ACCESS_DENIED) return ERROR_ACCESS_DENIED;
  const std::string text =
      UnitText({record, words, RootPath(), std::filesystem::absolute(SystemFolder()),
                EnvironmentFile(record.name)});
  // A service that was created without systemd has no unit yet.
  const DWORD error = Announce(record, text, hasNewStartType || !IsMade(before));
  if (error == NO_ERROR) return NO_ERROR;
  if (before.empty()) {
    bus_->Disable(unit);
    ::unlink(file.c_str());
  } else {
    WriteText(file, before, 0644);
  }
  return error;
}

DWORD SystemdKeeper::Announce(const ServiceRecord& record, const std::string& text,
                              bool hasNewStartType) {
  const std::string unit = UnitOf(record.name);
  DWORD error = WriteText(UnitFile(record.name), text, 0644);
  if (error == NO_ERROR && hasNewStartType) {
    error = record.startType == SERVICE_AUTO_START ? bus_->Enable(unit) : bus_->Disable(unit);
  }
  return error == NO_ERROR ? bus_->Reload() : error;
}

DWORD SystemdKeeper::Remove(std::wstring_view name) {
  const std::filesystem::path file = UnitFile(name);
  if (!IsMade(ReadText(file))) return NO_ERROR;
  const DWORD error = bus_->Disable(UnitOf(name));
  if (error != NO_ERROR) return error;
  ::unlink(EnvironmentFile(name).c_str());
  if (::unlink(file.c_str()) != 0) return ErrorFromErrno(errno);
  return bus_->Reload();
}

DWORD SystemdKeeper::Start(const ServiceRecord& record) {
  const std::string unit = UnitOf(record.name);
  if (HasProcess(record) || bus_->IsStarting(unit)) return ERROR_SERVICE_ALREADY_RUNNING;
  const std::vector<std::string> words = ProgramWords(record);
  DWORD error = words.empty() ? ERROR_FILE_NOT_FOUND : RequireTrustedProgram(record, words);
  if (error != NO_ERROR) return error;
  error = WriteText(EnvironmentFile(record.name), EnvironmentText(), 0600);
  if (error != NO_ERROR) return error;
  error = bus_->Start(unit, [&record] { return HasProcess(record); });
  if (error != NO_ERROR) NoteStop(record.name);
  return error;
}

bool SystemdKeeper::IsStarting(std::wstring_view name) {
  return bus_->IsStarting(UnitOf(name));
}

void SystemdKeeper::NoteStop(std::wstring_view name) {
  if (IsMade(ReadText(UnitFile(name)))) bus_->Stop(UnitOf(name));
}

}  // namespace platform
