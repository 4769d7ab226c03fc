#include <windows.h>

#include <gtest/gtest.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "platform/kit/failing_call.h"

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
  const std::pair<const wchar_t*, Words> cases[] = {
      {L"p a b", {L"p", L"a", L"b"}},
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
      {L" p", {L"", L"p"}},
  };
  for (const auto& [line, words] : cases)
    EXPECT_EQ(Split(line), words) << ::testing::PrintToString(std::wstring(line));
}

TEST(CommandLine, AnEmptyOneIsTheProgramItselfAndNoneAnError) {
  wchar_t path[MAX_PATH] = L"";
  ::GetModuleFileNameW(nullptr, path, MAX_PATH);
  EXPECT_EQ(Split(L""), Words{path});
  EXPECT_EQ(ErrorOf(!Split(nullptr).empty()), ERROR_INVALID_PARAMETER);
}

}  // namespace
