#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/kit/failing_call.h"

namespace {

std::wstring Widen(std::string_view text) {
  const auto convert = [length = static_cast<int>(text.size()), &text](wchar_t* wide, int size) {
    return ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide, size);
  };
  const int size = convert(nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'?');
  EXPECT_EQ(convert(wide.data(), size), size);
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  const auto convert = [length = static_cast<int>(wide.size()), &wide](char* text, int size) {
    return ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), length, text, size, nullptr, nullptr);
  };
  const int size = convert(nullptr, 0);
  std::string text(static_cast<std::size_t>(size), '?');
  EXPECT_EQ(convert(text.data(), size), size);
  return text;
}

// Characters of every length at every place of the runs that are copied at once.
TEST(CodePage, TextOfAnyLengthGoesThereAndBack) {
  const std::wstring piece = L"a\u00e5b\u20acc\U0001F600d\U0010FFFFefghijklmnopqrst";
  for (std::size_t start = 0; start < piece.size(); ++start) {
    for (std::size_t length = 1; start + length <= piece.size(); ++length) {
      const std::wstring text = piece.substr(start, length);
      EXPECT_EQ(Widen(Narrow(text)), text);
    }
  }
}

TEST(CodePage, MalformedBytesBecomeTheReplacementCharacterOrFail) {
  const std::pair<const char*, const wchar_t*> cases[] = {
      {"-\xFF-", L"-\uFFFD-"},
      {"\xC3", L"\uFFFD"},
      {"\xC0\x80", L"\uFFFD\uFFFD"},
      {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"12345678\x80", L"12345678\uFFFD"},
  };
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(Widen(bytes), text);
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes, -1, nullptr, 0), 0);
    EXPECT_EQ(::GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
  }
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "\xEF\xBF\xBD", 3, nullptr, 0), 1);
  EXPECT_EQ(Narrow(std::wstring(2, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CodePage, ALengthOfMinusOneCountsTheTerminator) {
  wchar_t wide[4] = L"???";
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, 0, "abc", -1, wide, 4), 4);
  EXPECT_STREQ(wide, L"abc");
  char text[4] = "???";
  EXPECT_EQ(::WideCharToMultiByte(CP_UTF8, 0, L"abc", -1, text, 4, nullptr, nullptr), 4);
  EXPECT_STREQ(text, "abc");
}

TEST(CodePage, InvalidArgumentsAndShortBuffersFailWithTheirErrors) {
  wchar_t wide[] = L"...........";
  const auto widen = [](const char* text, int length, wchar_t* to, int size, UINT page = CP_UTF8,
                        DWORD flags = 0) {
    return ErrorOf(::MultiByteToWideChar(page, flags, text, length, to, size));
  };
  EXPECT_EQ(widen("a", 1, wide, 4, 1252), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(widen("a", 1, wide, 4, CP_UTF8, 0x1), ERROR_INVALID_FLAGS);
  EXPECT_EQ(widen("a", 0, wide, 4), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(widen(nullptr, 1, wide, 4), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(widen("a", 1, nullptr, 4), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(widen("a", 1, wide, -1), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(widen("0123456789", 10, wide, 9), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(wide[9], L'.');
  char text[] = "...........";
  const auto narrow = [&](const wchar_t* from, int length, const char* unknown = nullptr,
                          BOOL* used = nullptr, DWORD flags = 0) {
    return ErrorOf(::WideCharToMultiByte(CP_UTF8, flags, from, length, text, 9, unknown, used));
  };
  BOOL used = FALSE;
  EXPECT_EQ(narrow(L"a", 1, nullptr, nullptr, 0x400), ERROR_INVALID_FLAGS);
  EXPECT_EQ(narrow(L"a", 1, "?"), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(narrow(L"a", 1, nullptr, &used), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(narrow(L"01234567\u00e5", 9), ERROR_INSUFFICIENT_BUFFER) << "two bytes, room for one";
  EXPECT_EQ(text[9], '.');
}

}  // namespace
