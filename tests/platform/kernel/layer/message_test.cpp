#include <windows.h>

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "platform/kernel/resources.h"
#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr LANGID kEnglish = 0x409;
constexpr LANGID kSwedish = 0x41D;
constexpr LANGID kDamaged = 0x407;

struct Message {
  std::uint32_t id;
  std::string text;
  std::uint16_t flags = 0;  // 1: the text is UTF-16
};

// A message table of one block for each message, in the documented layout.
std::vector<std::byte> Table(const std::vector<Message>& messages) {
  std::string head;
  std::string body;
  const auto append = [](std::string& out, const auto& number) {
    out.append(reinterpret_cast<const char*>(&number), sizeof number);
  };
  append(head, static_cast<std::uint32_t>(messages.size()));
  for (const Message& each : messages) {
    append(head, each.id);
    append(head, each.id);
    append(head, static_cast<std::uint32_t>(4 + 12 * messages.size() + body.size()));
    const std::size_t padding = (0 - each.text.size()) % 4;
    append(body, static_cast<std::uint16_t>(4 + each.text.size() + padding));
    append(body, each.flags);
    body += each.text + std::string(padding, '\0');
  }
  const auto bytes = std::as_bytes(std::span(head += body));
  return {bytes.begin(), bytes.end()};
}

std::string Utf16(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

[[maybe_unused]] const bool registered = [] {
  static const auto english = Table({
      {1, "Hello%0"},
      {2, "ends in a break\r\n"},
      {3, "The value %1!u! is not in %2!lu! - %3!d!.%0"},
      {4, "%2!s! before %1, twice %1!s!%0"},
      {5, "100%% a%nb%rc%td% e%.f%!g%zh%0not seen"},
      {6, "one\r\ntwo\nthree\rfour"},
      {7, Utf16(u"sixteen \u00e5 \U00010000\U0010FFFF%0"), 1},
      {8, "only English \xC3\xA5%0"},
      {9, "%1!x!%0"},
      {10, "%1!u! and %1!s!%0"},
      {11, "%3!u! without the first two%0"},
      {13, "%1!u"},
      {14, "50%"},
  });
  static const auto swedish = Table({{1, "Hej%0"}});
  // Says that it has a message at the very end and more blocks than bytes.
  static auto damaged = swedish;
  damaged[0] = std::byte{0xFF};
  damaged[12] = std::byte{0xF0};
  static const platform::Resource resources[] = {
      {11, 1, kEnglish, english}, {11, 1, kSwedish, swedish}, {11, 1, kDamaged, damaged}};
  platform::RegisterResources(resources);
  return true;
}();

constexpr DWORD kFlags = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_HMODULE;

DWORD Format(DWORD flags, DWORD id, DWORD language, LPWSTR buffer, DWORD size, ...) {
  va_list arguments;
  va_start(arguments, size);
  const DWORD length = ::FormatMessageW(flags, nullptr, id, language, buffer, size, &arguments);
  va_end(arguments);
  return length;
}

template <class... Inserts>
std::wstring Text(DWORD id, DWORD language, Inserts... inserts) {
  LPWSTR buffer = nullptr;
  const DWORD length =
      Format(kFlags, id, language, reinterpret_cast<LPWSTR>(&buffer), 0, inserts...);
  const std::wstring text = buffer == nullptr ? L"" : std::wstring(buffer, length);
  EXPECT_EQ(buffer == nullptr ? 0 : std::wcslen(buffer), length);
  ::LocalFree(buffer);
  return text;
}

TEST(FormatMessage, EntriesOfBothEncodingsAreReadAndTheirEscapesReplaced) {
  EXPECT_EQ(Text(1, kEnglish), L"Hello");
  EXPECT_EQ(Text(2, kEnglish), L"ends in a break\r\n");
  EXPECT_EQ(Text(5, kEnglish), L"100% a\r\nb\rc\td e.f!gzh");
  EXPECT_EQ(Text(6, kEnglish), L"one\r\ntwo\r\nthree\r\nfour");
  EXPECT_EQ(Text(7, kEnglish), L"sixteen \u00e5 \U00010000\U0010FFFF");
  EXPECT_EQ(Text(8, kEnglish), L"only English \u00e5");
  EXPECT_EQ(Text(14, kEnglish), L"50%");
}

TEST(FormatMessage, InsertsAreTakenInTheOrderOfTheirNumbers) {
  EXPECT_EQ(Text(3, kEnglish, 4294967295u, 7u, -5), L"The value 4294967295 is not in 7 - -5.");
  EXPECT_EQ(Text(4, kEnglish, L"first", L"second"), L"second before first, twice first");
  EXPECT_EQ(Text(11, kEnglish, 1u, 2u, 3u), L"3 without the first two");
}

TEST(FormatMessage, WithoutALanguageTheUsersIsTriedThenEnglish) {
  const struct {
    LANGID user;
    DWORD wanted;
    const wchar_t* text;
  } cases[] = {
      {kSwedish, 0, L"Hej"},       {kSwedish, 0x400, L"Hej"}, {0x81D, 0x400, L"Hej"},
      {kEnglish, 0x400, L"Hello"}, {0x40C, 0x400, L"Hello"},  {0x809, 0, L"Hello"},
  };
  platform::SimulatedMachine machine;
  EXPECT_EQ(Text(1, kSwedish), L"Hej") << "the language that is asked for goes first";
  for (const auto& each : cases) {
    machine.SetLocale(each.user, 0);
    EXPECT_EQ(Text(1, each.wanted), each.text) << each.user;
  }
  machine.SetLocale(kSwedish, 0);
  EXPECT_EQ(Text(8, 0), L"only English \u00e5");
}

TEST(FormatMessage, MissingTextsAndWrongInsertsFailWithTheirErrors) {
  const std::tuple<DWORD, LANGID, DWORD> cases[] = {
      {8, kSwedish, ERROR_MR_MID_NOT_FOUND},   {1, 0x40C, ERROR_RESOURCE_LANG_NOT_FOUND},
      {1, kDamaged, ERROR_MR_MID_NOT_FOUND},   {70000, kDamaged, ERROR_MR_MID_NOT_FOUND},
      {9, kEnglish, ERROR_INVALID_PARAMETER},  {10, kEnglish, ERROR_INVALID_PARAMETER},
      {13, kEnglish, ERROR_INVALID_PARAMETER},
  };
  for (const auto& [id, language, error] : cases)
    EXPECT_EQ(ErrorOf(!Text(id, language, 1u).empty()), error) << id;
  LPWSTR buffer = nullptr;
  const auto target = reinterpret_cast<LPWSTR>(&buffer);
  EXPECT_EQ(ErrorOf(::FormatMessageW(kFlags, nullptr, 3, kEnglish, target, 0, nullptr)),
            ERROR_INVALID_PARAMETER);
  constexpr DWORD kFromSystem = 0x1000;
  EXPECT_EQ(ErrorOf(Format(kFlags | kFromSystem, 1, kEnglish, target, 0)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(buffer, nullptr);
}

TEST(FormatMessage, ACallersBufferIsNotOverrun) {
  wchar_t buffer[6] = L"xxxxx";
  EXPECT_EQ(ErrorOf(Format(FORMAT_MESSAGE_FROM_HMODULE, 1, kEnglish, buffer, 5)),
            ERROR_INSUFFICIENT_BUFFER);
  EXPECT_STREQ(buffer, L"xxxxx");
  EXPECT_EQ(Format(FORMAT_MESSAGE_FROM_HMODULE, 1, kEnglish, buffer, 6), 5u);
  EXPECT_STREQ(buffer, L"Hello");
}

BOOL CALLBACK Collect(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR parameter) {
  auto* seen = reinterpret_cast<std::vector<WORD>*>(parameter);
  seen->push_back(language);
  return seen->size() < 2 || seen->front() != kEnglish ? TRUE : FALSE;
}

TEST(EnumResourceLanguages, GoesOnInOrderUntilTheCallbackStops) {
  std::vector<WORD> seen;
  const auto enumerate = [&seen](int type, int name) {
    return ErrorOf(::EnumResourceLanguagesW(nullptr, MAKEINTRESOURCEW(type), MAKEINTRESOURCEW(name),
                                            Collect, reinterpret_cast<LONG_PTR>(&seen)));
  };
  EXPECT_EQ(enumerate(11, 1), ERROR_RESOURCE_ENUM_USER_STOP);
  EXPECT_EQ(seen, (std::vector<WORD>{kEnglish, kSwedish}));
  seen = {0};
  EXPECT_EQ(enumerate(11, 1), NO_ERROR);
  EXPECT_EQ(seen.size(), 4u);
  EXPECT_EQ(enumerate(11, 2), ERROR_RESOURCE_NAME_NOT_FOUND);
  EXPECT_EQ(enumerate(12, 1), ERROR_RESOURCE_TYPE_NOT_FOUND);
}

}  // namespace
