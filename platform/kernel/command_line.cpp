#include "platform/kernel/command_line.h"

#include <shellapi.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/kernel/path.h"

namespace {

constexpr std::wstring_view kBlanks = L" \t";

std::vector<std::string> ProcessArguments() {
  std::ifstream file("/proc/self/cmdline", std::ios::binary);
  const std::string all{std::istreambuf_iterator<char>(file), {}};
  std::vector<std::string> words;
  for (std::size_t at = 0; at < all.size();) {
    const std::size_t end = std::min(all.find('\0', at), all.size());
    words.push_back(all.substr(at, end - at));
    at = end + 1;
  }
  return words;
}

// The program's name has no escapes, so quotation marks in it are dropped.
std::wstring QuotedProgram(std::wstring name) {
  std::erase(name, L'"');
  const bool plain = !name.empty() && name.find_first_of(kBlanks) == std::wstring::npos;
  return plain ? name : L'"' + name + L'"';
}

// Quotes an argument so that CommandLineToArgvW yields it again. Backslashes are doubled only where
// a quotation mark follows.
std::wstring Quoted(const std::wstring& word) {
  if (!word.empty() && word.find_first_of(L" \t\"") == std::wstring::npos) return word;
  std::wstring out = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t letter : word) {
    if (letter == L'"') out.append(backslashes + 1, L'\\');
    backslashes = letter == L'\\' ? backslashes + 1 : 0;
    out += letter;
  }
  return out.append(backslashes, L'\\') + L'"';
}

std::wstring BuildCommandLine() {
  std::wstring line;
  bool first = true;
  for (const std::string& word : ProcessArguments()) {
    line +=
        first ? QuotedProgram(platform::WindowsPath(word)) : L' ' + Quoted(platform::Wide(word));
    first = false;
  }
  return line;
}

void SkipBlanks(std::wstring_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
}

std::wstring TakeProgram(std::wstring_view& line) {
  const bool quoted = line.starts_with(L'"');
  if (quoted) line.remove_prefix(1);
  const std::size_t end =
      std::min(quoted ? line.find(L'"') : line.find_first_of(kBlanks), line.size());
  std::wstring name(line.substr(0, end));
  line.remove_prefix(std::min(quoted ? end + 1 : end, line.size()));
  return name;
}

// 2n backslashes before a quotation mark are n backslashes, and the mark begins or ends a
// quotation. 2n+1 are n backslashes and a literal mark. All other backslashes are literal.
std::wstring TakeWord(std::wstring_view& line) {
  std::wstring word;
  bool quoted = false;
  std::size_t at = 0;
  while (at < line.size() && (quoted || kBlanks.find(line[at]) == std::wstring_view::npos)) {
    const std::size_t mark = std::min(line.find_first_not_of(L'\\', at), line.size());
    const std::size_t backslashes = mark - at;
    at = mark;
    if (mark == line.size() || line[mark] != L'"') {
      word.append(backslashes, L'\\');
      if (backslashes == 0) word += line[at++];
      continue;
    }
    word.append(backslashes / 2, L'\\');
    ++at;
    if (backslashes % 2 != 0) {
      word += L'"';
    } else if (quoted && at < line.size() && line[at] == L'"') {
      // Two marks inside quotation marks are one literal mark and the end of the quotation.
      word += L'"';
      quoted = false;
      ++at;
    } else {
      quoted = !quoted;
    }
  }
  line.remove_prefix(at);
  return word;
}

std::wstring ProgramPath() {
  std::wstring path(32768, L'\0');  // the longest path of the API
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::vector<std::wstring> SplitCommandLine(std::wstring_view line) {
  if (line.empty()) return {ProgramPath()};
  std::vector<std::wstring> words{TakeProgram(line)};
  for (SkipBlanks(line); !line.empty(); SkipBlanks(line))
    words.push_back(TakeWord(line));
  return words;
}

// One block for LocalFree: the pointers, a null pointer, and the words. Null for lack of memory.
LPWSTR* PackWords(const std::vector<std::wstring>& words) {
  std::size_t letters = 0;
  for (const std::wstring& word : words)
    letters += word.size() + 1;
  const std::size_t pointerBytes = (words.size() + 1) * sizeof(LPWSTR);
  void* block = std::malloc(pointerBytes + letters * sizeof(wchar_t));
  if (block == nullptr) return nullptr;
  auto* pointers = static_cast<LPWSTR*>(block);
  auto* text = reinterpret_cast<wchar_t*>(static_cast<char*>(block) + pointerBytes);
  for (const std::wstring& word : words) {
    *pointers++ = text;
    text = std::ranges::copy(word, text).out;
    *text++ = L'\0';
  }
  *pointers = nullptr;
  return static_cast<LPWSTR*>(block);
}

}  // namespace

namespace platform {

LPWSTR CommandLineArguments() {
  const LPWSTR line = ::GetCommandLineW();
  std::wstring_view rest = line;
  const std::size_t whole = rest.size();
  TakeProgram(rest);
  SkipBlanks(rest);
  return line + (whole - rest.size());
}

}  // namespace platform

extern "C" {

LPWSTR WINAPI GetCommandLineW() try {
  static std::wstring& line = *new std::wstring(BuildCommandLine());
  return line.data();
} catch (...) {
  return platform::FailedCall<LPWSTR>(nullptr);
}

LPWSTR* WINAPI CommandLineToArgvW(LPCWSTR commandLine, int* argumentCount) try {
  if (commandLine == nullptr || argumentCount == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
  }
  const std::vector<std::wstring> words = SplitCommandLine(commandLine);
  LPWSTR* packed = PackWords(words);
  if (packed == nullptr) {
    ::SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }
  *argumentCount = static_cast<int>(words.size());
  return packed;
} catch (...) {
  return platform::FailedCall<LPWSTR*>(nullptr);
}

}  // extern "C"
