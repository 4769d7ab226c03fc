#include "service/command_line.h"

#include <windows.h>
#include <shellapi.h>

#include <algorithm>

namespace quillgate {
namespace {

constexpr std::wstring_view kSeparators = L"-/";

struct Command {
  std::wstring_view word;
  CommandWord command;
};
constexpr Command kCommands[] = {
    {L"install", CommandWord::kInstall},
    {L"uninstall", CommandWord::kUninstall},
    {L"setupwizard", CommandWord::kSetupWizard},
};

std::wstring Lower(std::wstring_view text) {
  std::wstring lower(text);
  for (wchar_t& character : lower) {
    if (character >= L'A' && character <= L'Z') character += L'a' - L'A';
  }
  return lower;
}

}  // namespace

std::vector<std::wstring> CommandLineWords() {
  int count = 0;
  LPWSTR* arguments = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (arguments == nullptr) return {};
  std::vector<std::wstring> words(arguments, arguments + count);
  ::LocalFree(arguments);
  return words;
}

CommandWord CommandOf(const std::vector<std::wstring>& words) {
  if (words.size() < 2) return CommandWord::kRunService;
  const std::wstring& argument = words[1];
  const std::size_t begin = argument.find_first_not_of(kSeparators);
  if (begin == std::wstring::npos) return CommandWord::kRunService;
  const std::size_t end = std::min(argument.find_first_of(kSeparators, begin), argument.size());
  const std::wstring word = Lower(std::wstring_view(argument).substr(begin, end - begin));
  const auto* found = std::ranges::find(kCommands, std::wstring_view(word), &Command::word);
  return found == std::end(kCommands) ? CommandWord::kUnknown : found->command;
}

std::wstring FolderOf(std::wstring_view path) {
  return std::wstring(path.substr(0, path.rfind(L'\\')));
}

}  // namespace quillgate
