#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring Widen(std::string_view text) {
  std::wstring wide(text.size() + 1, L'?');
  const int count = ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                          wide.data(), static_cast<int>(wide.size()));
  EXPECT_EQ(count, ::MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0));
  wide.resize(static_cast<std::size_t>(count));
  return wide;
}

std::string Narrow(std::wstring_view wide) {
  std::string text(wide.size() * 4 + 1, '?');
  const int count =
      ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), text.data(),
                            static_cast<int>(text.size()), nullptr, nullptr);
  EXPECT_EQ(count, ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                         nullptr, 0, nullptr, nullptr));
  text.resize(static_cast<std::size_t>(count));
  return text;
}

// Characters of every length at every place of the runs that are copied at once.
TEST(CodePage, TextOfAnyLengthGoesThereAndBack) {
  const std::wstring piece = L"a\u00e5b\u20acc\U0001F600defghijklmnopqrst";
  for (std::size_t start = 0; start < piece.size(); ++start) {
    for (std::size_t length = 1; start + length <= piece.size(); ++length) {
      const std::wstring text = piece.substr(start, length);
      EXPECT_EQ(Widen(Narrow(text)), text);
    }
  }
}

TEST(CodePage, MalformedBytesBecomeTheReplacementCharacterOrFail) {
  struct Case {
    const char* bytes;
    const wchar_t* text;
  };
  for (const Case& each : {Case{"a\xFF"
                                "b",
                                L"a\uFFFDb"},
                           Case{"\xC3", L"\uFFFD"}, Case{"\xC0\x80", L"\uFFFD\uFFFD"},
                           Case{"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
                           Case{"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
                           Case{"12345678\x80", L"12345678\uFFFD"}}) {
    EXPECT_EQ(Widen(each.bytes), each.text);
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, each.bytes, -1, nullptr, 0), 0);
    EXPECT_EQ(::GetLastError(), ERROR_NO_UNICODE_TRANSLATION);
  }
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, "\xEF\xBF\xBD", 3, nullptr, 0), 1);
  EXPECT_EQ(Narrow(std::wstring{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000)}),
            "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CodePage, ALengthOfMinusOneCountsTheTerminator) {
  wchar_t wide[4] = L"???";
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, 0, "abc", -1, nullptr, 0), 4);
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, 0, "abc", -1, wide, 4), 4);
  EXPECT_STREQ(wide, L"abc");
  char text[4] = "???";
  EXPECT_EQ(::WideCharToMultiByte(CP_UTF8, 0, L"abc", -1, text, 4, nullptr, nullptr), 4);
  EXPECT_STREQ(text, "abc");
}

TEST(CodePage, ABufferThatIsTooSmallIsNotOverrun) {
  wchar_t wide[12] = L"...........";
  EXPECT_EQ(::MultiByteToWideChar(CP_UTF8, 0, "0123456789", 10, wide, 9), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(wide[9], L'.');
  char text[12] = "...........";
  // The last character needs two bytes where there is one.
  EXPECT_EQ(::WideCharToMultiByte(CP_UTF8, 0, L"01234567\u00e5", 9, text, 9, nullptr, nullptr), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(text[9], '.');
}

TEST(CodePage, WrongArgumentsGetTheDocumentedErrors) {
  wchar_t wide[4];
  char text[4];
  BOOL used = FALSE;
  const auto check = [](int result, DWORD error) {
    EXPECT_EQ(result, 0);
    EXPECT_EQ(::GetLastError(), error);
    ::SetLastError(NO_ERROR);
  };
  check(::MultiByteToWideChar(1252, 0, "a", 1, wide, 4), ERROR_INVALID_PARAMETER);
  check(::MultiByteToWideChar(CP_UTF8, 0x1, "a", 1, wide, 4), ERROR_INVALID_FLAGS);
  check(::MultiByteToWideChar(CP_UTF8, 0, "a", 0, wide, 4), ERROR_INVALID_PARAMETER);
  check(::MultiByteToWideChar(CP_UTF8, 0, nullptr, 1, wide, 4), ERROR_INVALID_PARAMETER);
  check(::MultiByteToWideChar(CP_UTF8, 0, "a", 1, nullptr, 4), ERROR_INVALID_PARAMETER);
  check(::MultiByteToWideChar(CP_UTF8, 0, "a", 1, wide, -1), ERROR_INVALID_PARAMETER);
  check(::WideCharToMultiByte(CP_UTF8, 0x400, L"a", 1, text, 4, nullptr, nullptr),
        ERROR_INVALID_FLAGS);
  check(::WideCharToMultiByte(CP_UTF8, 0, L"a", 1, text, 4, "?", nullptr), ERROR_INVALID_PARAMETER);
  check(::WideCharToMultiByte(CP_UTF8, 0, L"a", 1, text, 4, nullptr, &used),
        ERROR_INVALID_PARAMETER);
}

}  // namespace
