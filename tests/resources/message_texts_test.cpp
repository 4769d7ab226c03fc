#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <string>

namespace {

using Texts = std::map<std::uint32_t, std::string>;

// The message source's texts by language, with the line ends that they get in the table.
class MessageTexts : public testing::Test {
 protected:
  MessageTexts() {
    std::ifstream file(QG_MESSAGES);
    std::uint32_t number = 0;
    Texts* texts = nullptr;
    for (std::string line; std::getline(file, line);) {
      if (line.starts_with("MessageId=")) {
        number = static_cast<std::uint32_t>(std::stoul(line.substr(10)));
      } else if (line.starts_with("Language=")) {
        texts = &tables_[line.substr(9)];
        EXPECT_TRUE(texts->emplace(number, "").second) << number << " comes twice";
      } else if (line == ".") {
        texts = nullptr;
      } else if (texts != nullptr) {
        texts->at(number) += line + "\r\n";
      }
    }
  }
  const Texts& English() const { return tables_.at("English"); }
  const Texts& Swedish() const { return tables_.at("Swedish"); }

  std::map<std::string, Texts> tables_;
};

// Inserts and line breaks, whatever their order.
std::multiset<std::string> Marks(const std::string& text) {
  static const std::regex kMark("%%s|%[1-9]![a-z]+!|%n|%0|\r\n");
  return {std::sregex_token_iterator(text.begin(), text.end(), kMark), {}};
}

TEST_F(MessageTexts, NoNumberIsMissingOrInvented) {
  const std::pair<std::uint32_t, std::uint32_t> kRanges[] = {
      {100, 100},     {1000, 1046},   {1048, 1054},   {1058, 1102},
      {1104, 1106},   {1110, 1110},   {1119, 1130},   {1134, 1136},
      {10000, 10000}, {10002, 10012}, {20000, 20014}, {20017, 20019},
      {20022, 20023}, {30000, 30044}, {40000, 40017}, {41000, 41017}};
  std::set<std::uint32_t> expected;
  for (const auto& [first, last] : kRanges) {
    for (std::uint32_t number = first; number <= last; ++number)
      expected.insert(number);
  }
  for (const auto& [language, texts] : tables_) {
    std::set<std::uint32_t> numbers;
    for (const auto& [number, text] : texts)
      numbers.insert(number);
    EXPECT_EQ(numbers, expected) << language;
  }
}

TEST_F(MessageTexts, ATranslationHasTheInsertsAndLineBreaksOfItsText) {
  ASSERT_EQ(tables_.size(), 2u);
  for (const auto& [number, text] : English())
    EXPECT_EQ(Marks(Swedish().at(number)), Marks(text)) << number;
}

TEST_F(MessageTexts, EveryTextButOneEndsWithoutALineBreakAndHasOnlyKnownPercentSigns) {
  static const std::regex kStray("%(?!%s|[1-3]!l?u!|n|0|s)");
  for (const auto& [language, texts] : tables_) {
    for (const auto& [number, text] : texts) {
      const std::size_t end = number == 10005 ? std::string::npos : text.size() - 4;
      EXPECT_EQ(text.find("%0"), end) << number;
      EXPECT_TRUE(text.ends_with("\r\n")) << number;
      EXPECT_FALSE(std::regex_search(text, kStray)) << number << ": " << text;
    }
  }
}

TEST_F(MessageTexts, TextsWithEditorHazardsAreKeptToTheLetter) {
  EXPECT_EQ(English().at(20001),
            "Because the logon system has changed, settings must be applied \r\n"
            "before it will be possible to change user settings.\r\n\r\n"
            "Please press OK or Apply to do this.%0\r\n");
  EXPECT_EQ(English().at(20011),
            "A new user with administrator rights for Quillgate has been created. \r\n\r\n"
            "The password for this new user is currently blank.%0\r\n");
  EXPECT_EQ(Swedish().at(1041), "Quillgate - Inloggning%0\r\n");
  EXPECT_EQ(Swedish().at(1033), "S\xC3\xB6ndag%0\r\n");
}

}  // namespace
