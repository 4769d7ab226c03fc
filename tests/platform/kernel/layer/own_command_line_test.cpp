#include <windows.h>

#include <gtest/gtest.h>

#include <shellapi.h>

#include <unistd.h>

#include <string>
#include <vector>

namespace {

using Words = std::vector<std::wstring>;

// Runs this program once more as another one, with the words as its arguments: the other test of
// this file then compares them.
TEST(OwnCommandLine, IsReadBackWordForWord) {
  const char* filter = "--gtest_filter=OwnCommandLine.DISABLED_ShowsItsWords";
  const char* disabledToo = "--gtest_also_run_disabled_tests";
  const char* words[] = {"./not here/prog", filter,    disabledToo, "",         "a b",  "q\"uote",
                         "back\\",          "back \\", "\\\"",      "\xC3\xA5", nullptr};
  EXPECT_EXIT(::execv("/proc/self/exe", const_cast<char**>(words)), testing::ExitedWithCode(0), "");
}

TEST(OwnCommandLine, DISABLED_ShowsItsWords) {
  int count = 0;
  LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  ASSERT_EQ(count, 10);
  EXPECT_STREQ(words[0], L".\\not here\\prog");
  EXPECT_EQ(Words(words + 3, words + count),
            (Words{L"", L"a b", L"q\"uote", L"back\\", L"back \\", L"\\\"", L"\u00e5"}));
  ::LocalFree(words);
}

}  // namespace
