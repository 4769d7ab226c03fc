#include "platform/service/service_program.h"

#include <windows.h>
#include <shellapi.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/kernel/encoding.h"
#include "platform/kernel/path.h"
#include "platform/kernel/trusted_path.h"
#include "platform/service/service_files.h"

namespace platform {
namespace {

constexpr std::wstring_view kSystemRootVariable = L"%SystemRoot%";

std::wstring Expand(std::wstring_view imagePath) {
  const std::wstring_view start = imagePath.substr(0, kSystemRootVariable.size());
  if (!EqualNames(start, kSystemRootVariable)) return std::wstring(imagePath);
  return WindowsPath(RootFolder()) + std::wstring(imagePath.substr(kSystemRootVariable.size()));
}

bool IsProgram(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(PosixPath(path), error);
}

// The length of the program's path in a command line without quotes. A path may contain blanks, so
// it is the shortest part that is a file; the whole text when there is none.
std::size_t ProgramLength(const std::wstring& commandLine) {
  for (std::size_t end = commandLine.find(L' '); end != std::wstring::npos;
       end = commandLine.find(L' ', end + 1)) {
    if (IsProgram(commandLine.substr(0, end))) return end;
  }
  return commandLine.size();
}

std::vector<std::string> Split(std::wstring line) {
  if (!line.starts_with(L'"')) {
    const std::size_t length = ProgramLength(line);
    line = L'"' + line.substr(0, length) + L'"' + line.substr(length);
  }
  std::vector<std::string> words;
  int count = 0;
  LPWSTR* split = ::CommandLineToArgvW(line.c_str(), &count);
  for (int i = 0; split != nullptr && i < count; ++i)
    words.push_back(i == 0 ? PosixPath(split[i]).native() : Utf8(split[i]));
  ::LocalFree(split);
  return words;
}

bool IsPassedOn(std::string_view variable) {
  constexpr std::string_view kNames[] = {
      "LANG=",
      "LANGUAGE=",
      "TZ=",
      "DISPLAY=",
      "WAYLAND_DISPLAY=",
      "XAUTHORITY=",
      "XDG_RUNTIME_DIR=",
      "XDG_SESSION_TYPE=",
      "DBUS_SESSION_BUS_ADDRESS=",
      "QT_QPA_PLATFORM=",
      "LC_",
  };
  return std::ranges::any_of(
      kNames, [variable](std::string_view name) { return variable.starts_with(name); });
}

}  // namespace

std::vector<std::string> ProgramWords(const ServiceRecord& record) {
  std::vector<std::string> words = Split(Expand(record.imagePath));
  if (!words.empty()) {
    words.front() = (std::filesystem::absolute(SystemFolder()) / words.front()).native();
  }
  return words;
}

DWORD RequireTrustedProgram(const ServiceRecord& record, const std::vector<std::string>& words) {
  return RequireTrusted(words.front(), "service " + Utf8(record.name));
}

std::vector<std::string> PassedOnVariables() {
  std::vector<std::string> variables;
  for (char** each = ::environ; each != nullptr && *each != nullptr; ++each) {
    if (IsPassedOn(*each)) variables.emplace_back(*each);
  }
  return variables;
}

}  // namespace platform
