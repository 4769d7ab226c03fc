#include "platform/tools/rescomp/message_source.h"

#include <gmock/gmock.h>

#include <sstream>

#include "platform/tools/rescomp/source_error.h"

namespace rescomp {
namespace {

using testing::HasSubstr;

constexpr char kNames[] = "LanguageNames=(English=0x409:MSG00409\n  Swedish=0x41D:MSG0041D)\n";

std::vector<MessageTable> Read(const std::string& text) {
  std::istringstream source(text);
  return ReadMessageSource(source, "texts.mc");
}

std::string Message(const std::string& id, const std::string& english, const std::string& swedish) {
  return "MessageId=" + id + "\nLanguage=English\n" + english + "\n.\nLanguage=Swedish\n" +
         swedish + "\n.\n";
}

TEST(MessageSource, TextsKeepTheirBlanksAndEndEachLineInCrLf) {
  const auto tables = Read(kNames + Message("100", "one  \n\n;two%0", "\xC3\xA5 \"%1!u!\"%0"));
  ASSERT_EQ(tables.size(), 2u);
  EXPECT_EQ(tables[0].language, 0x409);
  EXPECT_EQ(tables[0].fileStem, "MSG00409");
  EXPECT_EQ(tables[0].texts.at(100), "one  \r\n\r\n;two%0\r\n");
  EXPECT_EQ(tables[1].language, 0x41D);
  EXPECT_EQ(tables[1].texts.at(100), "\xC3\xA5 \"%1!u!\"%0\r\n");
}

TEST(MessageSource, LineEndsOfTheFileMakeNoDifference) {
  const std::string text =
      ";// comment\n\nMessageIdTypedef=DWORD\n" + std::string(kNames) + Message("1", "a\nb", "c");
  std::string windowsText;
  for (const char c : text)
    windowsText += c == '\n' ? std::string("\r\n") : std::string(1, c);
  EXPECT_EQ(Read(windowsText)[0].texts, Read(text)[0].texts);
}

TEST(MessageSource, AMissingOrRelativeNumberCountsOnFromTheLastOne) {
  const auto tables =
      Read(kNames + Message("0x10", "a", "a") + Message("", "b", "b") + Message("+3", "c", "c"));
  const std::map<std::uint32_t, std::string> expected = {
      {16, "a\r\n"}, {17, "b\r\n"}, {20, "c\r\n"}};
  EXPECT_EQ(tables[0].texts, expected);
}

TEST(MessageSource, MistakesAreToldWithTheirLine) {
  const std::string names = kNames;
  const struct {
    std::string source;
    const char* error;
  } kCases[] = {
      {names + "MessageId=1\nLanguage=Danish\nx\n.\n", "texts.mc:4: the language 'Danish'"},
      {names + "Language=English\nx\n.\n", "texts.mc:3: Language= comes before"},
      {names + "MessageId=1\nLanguage=English\nx\n", "texts.mc:4: message 1 is not ended"},
      {names + "MessageId=1\nLanguage=English\n.\n", "texts.mc:4: message 1 has no text"},
      {names + "MessageId=1\nLanguage=English\nx\n.\n", "message 1 has no text in Swedish"},
      {names + Message("1", "x", "x") + Message("1", "y", "y"), "message 1 comes twice"},
      {names + "MessageId=one\n", "texts.mc:3: 'one' is not a message number"},
      {names + "MessageId=5000000000\n", "is not a message number"},
      {names + "OutputBase=16\n", "texts.mc:3: 'OutputBase' is not supported"},
      {names + "a stray line\n", "texts.mc:3: a statement"},
      {names + Message("1", "\xE5", "x"), "texts.mc:5: the line is not UTF-8"},
      {"LanguageNames=(English=0x409:A\n", "')' is missing"},
      {"LanguageNames=(English=0x409)\n", "texts.mc:1: a language is given as"},
  };
  for (const auto& each : kCases) {
    try {
      Read(each.source);
      ADD_FAILURE() << "no error for " << each.source;
    } catch (const SourceError& error) {
      EXPECT_THAT(error.what(), HasSubstr(each.error));
    }
  }
}

TEST(MessageTable, ConsecutiveNumbersShareABlockAndEntriesAreAligned) {
  const Bytes bytes = EncodeMessageTable({{1, "abc"}, {2, "de"}, {5, "f"}});
  const Bytes expected = {2, 0, 0, 0,                                 // blocks
                          1, 0, 0, 0, 2,   0,   0,   0, 28, 0, 0, 0,  // 1 to 2, at byte 28
                          5, 0, 0, 0, 5,   0,   0,   0, 44, 0, 0, 0,  // 5, at byte 44
                          8, 0, 0, 0, 'a', 'b', 'c', 0,               // length, flags, text
                          8, 0, 0, 0, 'd', 'e', 0,   0,               //
                          8, 0, 0, 0, 'f', 0,   0,   0};
  EXPECT_EQ(bytes, expected);
}

TEST(MessageTable, ATextThatItsLengthFieldCannotTellIsRefused) {
  EXPECT_THROW(EncodeMessageTable({{1, std::string(70000, 'x')}}), std::length_error);
}

}  // namespace
}  // namespace rescomp
