// winregsvr, the command that lets a library enter itself into the registry or remove its entries,
// written to the Win32 API alone.
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "platform/tools/command_words.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kBadUsage = 2;

constexpr const wchar_t* kUsage =
    L"usage: winregsvr FILE     let the library register itself\n"
    L"       winregsvr /u FILE  let it remove what it has registered\n";

using RegisterFunction = HRESULT(WINAPI*)();

int Fail(const std::wstring& file, const wchar_t* what, unsigned error) {
  std::fwprintf(stderr, L"%ls: %ls (error %u)\n", file.c_str(), what, error);
  return kFailed;
}

int Call(const std::wstring& file, const char* name) {
  const HMODULE library = ::LoadLibraryW(file.c_str());
  if (library == nullptr) return Fail(file, L"cannot be loaded", ::GetLastError());
  const auto function = reinterpret_cast<RegisterFunction>(::GetProcAddress(library, name));
  const HRESULT result = function == nullptr ? S_OK : function();
  const DWORD error = ::GetLastError();
  ::FreeLibrary(library);
  if (function == nullptr) return Fail(file, L"does not register itself", error);
  if (result < 0) return Fail(file, L"failed", static_cast<unsigned>(result));
  return kDone;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  const std::vector<std::wstring> words = platform::CommandWords();
  if (words.size() == 2) return Call(words[1], "DllRegisterServer");
  if (words.size() == 3 && words[1] == L"/u") return Call(words[2], "DllUnregisterServer");
  std::fputws(kUsage, stderr);
  return kBadUsage;
}
