// winsc, the command that controls services, written to the Win32 API alone.
#include <windows.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "platform/tools/command_words.h"
#include "platform/tools/winsc/commands.h"

namespace {

using namespace platform::winsc;

constexpr const wchar_t* kUsage =
    L"usage: winsc start NAME         start a service\n"
    L"       winsc stop NAME          stop it and wait until its process has gone\n"
    L"       winsc query NAME         show its state; exit status 3 when it is stopped\n"
    L"       winsc control NAME CODE  send a control, 1 to 255\n"
    L"       winsc refresh NAME       write its unit anew, as after an update\n"
    L"       winsc delete NAME        remove it from the system\n"
    L"       winsc autostart          start what is to start with the system\n";

int Usage() {
  std::fputws(kUsage, stderr);
  return kBadUsage;
}

int ControlWithCode(const std::wstring& name, const std::wstring& code) {
  constexpr unsigned long kLastControl = 255;
  wchar_t* end = nullptr;
  const unsigned long number = std::wcstoul(code.c_str(), &end, 10);
  if (code.empty() || *end != L'\0' || number == 0 || number > kLastControl) return Usage();
  return Control(name, static_cast<DWORD>(number));
}

int Run(const std::vector<std::wstring>& words) {
  const std::wstring command = words.size() > 1 ? words[1] : std::wstring();
  if (words.size() == 2 && command == L"autostart") return Autostart();
  if (words.size() == 3 && command == L"start") return Start(words[2]);
  if (words.size() == 3 && command == L"stop") return Stop(words[2]);
  if (words.size() == 3 && command == L"query") return Query(words[2]);
  if (words.size() == 3 && command == L"refresh") return Refresh(words[2]);
  if (words.size() == 3 && command == L"delete") return Delete(words[2]);
  if (words.size() == 4 && command == L"control") return ControlWithCode(words[2], words[3]);
  return Usage();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  return Run(platform::CommandWords());
}
