#include <windows.h>

#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/kernel/resources.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr LANGID kEnglish = 0x409;
constexpr LANGID kSwedish = 0x41D;
constexpr LANGID kDamaged = 0x407;

// A message table of one block for each message, in the documented layout.
class TableBuilder {
 public:
  void Add(DWORD id, std::uint16_t flags, const void* text, std::size_t bytes) {
    const std::size_t padded = (bytes + 3) / 4 * 4;
    std::string entry(4 + padded, '\0');
    const auto length = static_cast<std::uint16_t>(entry.size());
    std::memcpy(entry.data(), &length, 2);
    std::memcpy(entry.data() + 2, &flags, 2);
    std::memcpy(entry.data() + 4, text, bytes);
    entries_.emplace_back(id, entry);
  }
  void Add(DWORD id, std::string_view utf8) { Add(id, 0, utf8.data(), utf8.size()); }
  void Add(DWORD id, std::u16string_view text) { Add(id, 1, text.data(), text.size() * 2); }

  std::vector<std::byte> Bytes() const {
    std::string head;
    std::string body;
    Append(head, static_cast<std::uint32_t>(entries_.size()));
    const std::size_t bodyStart = 4 + 12 * entries_.size();
    for (const auto& [id, entry] : entries_) {
      Append(head, id);
      Append(head, id);
      Append(head, static_cast<std::uint32_t>(bodyStart + body.size()));
      body += entry;
    }
    const std::string all = head + body;
    const auto* first = reinterpret_cast<const std::byte*>(all.data());
    return {first, first + all.size()};
  }

 private:
  static void Append(std::string& out, std::uint32_t number) {
    out.append(reinterpret_cast<const char*>(&number), 4);
  }
  std::vector<std::pair<DWORD, std::string>> entries_;
};

std::vector<std::byte> EnglishTable() {
  TableBuilder table;
  table.Add(1, "Hello%0");
  table.Add(2, "ends in a break\r\n");
  table.Add(3, "The value %1!u! is not in %2!lu! - %3!d!.%0");
  table.Add(4, "%2!s! before %1, twice %1!s!%0");
  table.Add(5, "100%% a%nb%rc%td% e%.f%!g%zh%0not seen");
  table.Add(6, "one\r\ntwo\nthree\rfour");
  table.Add(7, u"sixteen \u00e5 \U0001F600%0");
  table.Add(8, "only English \xC3\xA5%0");
  table.Add(9, "%1!x!%0");
  table.Add(10, "%1!u! and %1!s!%0");
  table.Add(11, "%3!u! without the first two%0");
  table.Add(12, "%0");
  table.Add(13, "%1!u");
  table.Add(14, "50%");
  return table.Bytes();
}

std::vector<std::byte> SwedishTable() {
  TableBuilder table;
  table.Add(1, "Hej%0");
  return table.Bytes();
}

// Says that it has a message at the very end and more blocks than bytes.
std::vector<std::byte> DamagedTable() {
  std::vector<std::byte> bytes = SwedishTable();
  bytes[0] = std::byte{0xFF};
  bytes[12] = std::byte{0xF0};
  return bytes;
}

void RegisterTables() {
  static const auto english = EnglishTable();
  static const auto swedish = SwedishTable();
  static const auto damaged = DamagedTable();
  static const platform::Resource resources[] = {
      {11, 1, kEnglish, english}, {11, 1, kSwedish, swedish}, {11, 1, kDamaged, damaged}};
  platform::RegisterResources(resources);
}
[[maybe_unused]] const bool registered = [] {
  RegisterTables();
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

class FormatMessage : public ::testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(FormatMessage, EscapesAndLineBreaksBecomeWhatIsDocumented) {
  EXPECT_EQ(Text(1, kEnglish), L"Hello");
  EXPECT_EQ(Text(2, kEnglish), L"ends in a break\r\n");
  EXPECT_EQ(Text(5, kEnglish), L"100% a\r\nb\rc\td e.f!gzh");
  EXPECT_EQ(Text(6, kEnglish), L"one\r\ntwo\r\nthree\r\nfour");
  EXPECT_EQ(Text(14, kEnglish), L"50%");
}

TEST_F(FormatMessage, InsertsAreTakenInTheOrderOfTheirNumbers) {
  EXPECT_EQ(Text(3, kEnglish, 4294967295u, 7u, -5), L"The value 4294967295 is not in 7 - -5.");
  EXPECT_EQ(Text(4, kEnglish, L"first", L"second"), L"second before first, twice first");
  EXPECT_EQ(Text(11, kEnglish, 1u, 2u, 3u), L"3 without the first two");
}

TEST_F(FormatMessage, EntriesOfBothEncodingsAreRead) {
  EXPECT_EQ(Text(7, kEnglish), L"sixteen \u00e5 \U0001F600");
  EXPECT_EQ(Text(8, kEnglish), L"only English \u00e5");
}

TEST_F(FormatMessage, ACertainLanguageIsThatOneAlone) {
  EXPECT_EQ(Text(1, kSwedish), L"Hej");
  EXPECT_EQ(Text(8, kSwedish), L"");
  EXPECT_EQ(::GetLastError(), ERROR_MR_MID_NOT_FOUND);
  EXPECT_EQ(Text(1, 0x40C), L"");
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_LANG_NOT_FOUND);
}

TEST_F(FormatMessage, WithoutALanguageTheUsersIsTriedThenEnglish) {
  struct Case {
    LANGID user;
    DWORD wanted;
    const wchar_t* text;
  };
  for (const Case& each :
       {Case{kSwedish, 0, L"Hej"}, Case{kSwedish, 0x400, L"Hej"}, Case{0x81D, 0x400, L"Hej"},
        Case{kEnglish, 0x400, L"Hello"}, Case{0x40C, 0x400, L"Hello"}, Case{0x809, 0, L"Hello"}}) {
    machine_.SetLocale(each.user, 0);
    EXPECT_EQ(Text(1, each.wanted), each.text) << each.user;
  }
  machine_.SetLocale(kSwedish, 0);
  EXPECT_EQ(Text(8, 0), L"only English \u00e5");
}

TEST_F(FormatMessage, ADamagedTableHasNoMessages) {
  EXPECT_EQ(Text(1, kDamaged), L"");
  EXPECT_EQ(Text(70000, kDamaged), L"");
  EXPECT_EQ(::GetLastError(), ERROR_MR_MID_NOT_FOUND);
}

TEST_F(FormatMessage, WrongInsertsAndFlagsFail) {
  for (const DWORD id : {9u, 10u, 13u}) {
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(Text(id, kEnglish, 1u), L"");
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER) << id;
  }
  LPWSTR buffer = nullptr;
  const auto target = reinterpret_cast<LPWSTR>(&buffer);
  EXPECT_EQ(::FormatMessageW(kFlags, nullptr, 3, kEnglish, target, 0, nullptr), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  constexpr DWORD kFromSystem = 0x1000;
  EXPECT_EQ(::FormatMessageW(kFlags | kFromSystem, nullptr, 1, kEnglish, target, 0, nullptr), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(buffer, nullptr);
}

TEST_F(FormatMessage, ACallersBufferIsNotOverrun) {
  wchar_t buffer[6] = L"xxxxx";
  EXPECT_EQ(Format(FORMAT_MESSAGE_FROM_HMODULE, 1, kEnglish, buffer, 5), 0u);
  EXPECT_EQ(::GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_STREQ(buffer, L"xxxxx");
  EXPECT_EQ(Format(FORMAT_MESSAGE_FROM_HMODULE, 1, kEnglish, buffer, 6), 5u);
  EXPECT_STREQ(buffer, L"Hello");
}

BOOL CALLBACK Collect(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR parameter) {
  auto* seen = reinterpret_cast<std::vector<WORD>*>(parameter);
  seen->push_back(language);
  return seen->size() < 2 || seen->front() != kEnglish ? TRUE : FALSE;
}

TEST_F(FormatMessage, LanguagesAreEnumeratedInOrderUntilTheCallbackStops) {
  std::vector<WORD> seen;
  const auto enumerate = [&seen](LPWSTR type, LPWSTR name) {
    return ::EnumResourceLanguagesW(nullptr, type, name, Collect,
                                    reinterpret_cast<LONG_PTR>(&seen));
  };
  EXPECT_FALSE(enumerate(RT_MESSAGETABLE, MAKEINTRESOURCEW(1)));
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_ENUM_USER_STOP);
  EXPECT_EQ(seen, (std::vector<WORD>{kEnglish, kSwedish}));
  seen = {0};
  EXPECT_TRUE(enumerate(RT_MESSAGETABLE, MAKEINTRESOURCEW(1)));
  EXPECT_EQ(seen.size(), 4u);
  EXPECT_FALSE(enumerate(RT_MESSAGETABLE, MAKEINTRESOURCEW(2)));
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
  EXPECT_FALSE(enumerate(MAKEINTRESOURCEW(12), MAKEINTRESOURCEW(1)));
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_TYPE_NOT_FOUND);
}

}  // namespace
