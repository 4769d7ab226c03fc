// The resources of fixture.rc, which the build has compiled and linked into this program.
#include <windows.h>

#include <gmock/gmock.h>

#include <cstdarg>
#include <string>
#include <vector>

namespace {

BOOL CALLBACK CollectLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR list) {
  reinterpret_cast<std::vector<WORD>*>(list)->push_back(language);
  return TRUE;
}

std::wstring Text(DWORD number, DWORD language, ...) {
  wchar_t text[40] = L"";
  va_list inserts;
  va_start(inserts, language);
  ::FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE, nullptr, number, language, text, 40, &inserts);
  va_end(inserts);
  return text;
}

TEST(LinkedResources, TheLanguagesComeInTheOrderOfTheSource) {
  std::vector<WORD> languages;
  EXPECT_TRUE(::EnumResourceLanguagesW(nullptr, RT_MESSAGETABLE, MAKEINTRESOURCEW(1),
                                       CollectLanguage, reinterpret_cast<LONG_PTR>(&languages)));
  EXPECT_THAT(languages, testing::ElementsAre(0x409, 0x41D));
}

TEST(LinkedResources, ATextIsFormattedFromTheLinkedTable) {
  EXPECT_EQ(Text(7, 0x409, 3), L"3 lines\r\n\"wide\"");
  EXPECT_EQ(Text(7, 0x41D, 3), L"3 rader p\u00e5 \"bredden\"");
}

}  // namespace
