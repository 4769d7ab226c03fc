#include <windows.h>

#include <gtest/gtest.h>

#include <shellapi.h>

#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "platform/testing/simulated_machine.h"

namespace {

using Words = std::vector<std::wstring>;

Words Split(const wchar_t* line) {
  int count = -1;
  LPWSTR* words = ::CommandLineToArgvW(line, &count);
  if (words == nullptr) return {};
  EXPECT_EQ(words[count], nullptr);
  const Words split(words, words + count);
  ::LocalFree(words);
  return split;
}

TEST(CommandLine, WordsAreSplitByTheDocumentedRules) {
  struct Case {
    const wchar_t* line;
    Words words;
  };
  for (const Case& each :
       std::vector<Case>{{L"p a b", {L"p", L"a", L"b"}},
                         {L"p  \t a ", {L"p", L"a"}},
                         {L"\"C:\\some dir\\p\" \"a b\"", {L"C:\\some dir\\p", L"a b"}},
                         {L"p\"q r", {L"p\"q", L"r"}},
                         {L"p \"\" x", {L"p", L"", L"x"}},
                         {L"p a\\\\b", {L"p", L"a\\\\b"}},
                         {L"p \"a\\\\\" b", {L"p", L"a\\", L"b"}},
                         {L"p a\\\"b", {L"p", L"a\"b"}},
                         {L"p a\\\\\\\"b", {L"p", L"a\\\"b"}},
                         {L"p a\\\\\"b c\"d", {L"p", L"a\\b cd"}},
                         {L"p \"a\"\"b c", {L"p", L"a\"b", L"c"}},
                         {L"p \"open end", {L"p", L"open end"}},
                         {L" p", {L"", L"p"}}}) {
    EXPECT_EQ(Split(each.line), each.words) << ::testing::PrintToString(std::wstring(each.line));
  }
}

TEST(CommandLine, AnEmptyOneIsTheProgramItself) {
  const platform::SimulatedMachine machine;
  wchar_t path[MAX_PATH];
  ASSERT_NE(::GetModuleFileNameW(nullptr, path, MAX_PATH), 0u);
  EXPECT_EQ(Split(L""), Words{path});
}

TEST(CommandLine, WithoutOneThereAreNoWords) {
  int count = 0;
  EXPECT_EQ(::CommandLineToArgvW(nullptr, &count), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
}

// Runs this program once more as another one, with the words as its arguments: the last test of
// this file then compares them.
TEST(CommandLine, TheProcesssOwnIsReadBackWordForWord) {
  const char* words[] = {"./not here/prog",
                         "--gtest_filter=CommandLine.DISABLED_ShowsItsWords",
                         "--gtest_also_run_disabled_tests",
                         "",
                         "a b",
                         "q\"uote",
                         "back\\",
                         "back \\",
                         "\\\"",
                         "\xC3\xA5",
                         nullptr};
  const pid_t child = ::fork();
  if (child == 0) {
    ::execv("/proc/self/exe", const_cast<char**>(words));
    ::_exit(127);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(CommandLine, DISABLED_ShowsItsWords) {
  const Words words = Split(::GetCommandLineW());
  ASSERT_EQ(words.size(), 10u);
  EXPECT_EQ(words.front(), L".\\not here\\prog");
  EXPECT_EQ(Words(words.begin() + 3, words.end()),
            (Words{L"", L"a b", L"q\"uote", L"back\\", L"back \\", L"\\\"", L"\u00e5"}));
}

}  // namespace
