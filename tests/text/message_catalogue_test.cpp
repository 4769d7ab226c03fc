#include "text/message_catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

constexpr DWORD kEnglish = 1033;
constexpr DWORD kSwedish = 1053;

class MessageCatalogueTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(MessageCatalogueTest, StartsInTheSystemsLanguage) {
  machine_.SetLocale(static_cast<LANGID>(kSwedish), 0);
  EXPECT_EQ(MessageCatalogue().InterfaceLanguageId(), kSwedish);
}

TEST_F(MessageCatalogueTest, TheDefaultSublanguageIsForcedOnWhatIsChosen) {
  MessageCatalogue catalogue;
  for (const auto& [chosen, stored] : std::vector<std::pair<DWORD, LANGID>>{{0, 0x0400},
                                                                            {kEnglish, 0x0409},
                                                                            {kSwedish, 0x041D},
                                                                            {9, 0x0409},
                                                                            {0x1234041D, 0x041D}}) {
    catalogue.SetInterfaceLanguage(chosen);
    EXPECT_EQ(catalogue.InterfaceLanguageId(), stored) << chosen;
  }
}

TEST_F(MessageCatalogueTest, NoChoiceMeansTheUsersOwnLanguage) {
  machine_.SetLocale(static_cast<LANGID>(kSwedish), 0);
  MessageCatalogue catalogue;
  catalogue.SetInterfaceLanguage(0);
  EXPECT_EQ(catalogue.GetMessageText(1041), L"Quillgate - Inloggning");
}

TEST_F(MessageCatalogueTest, TextsFollowTheLanguageAtOnce) {
  MessageCatalogue catalogue;
  catalogue.SetInterfaceLanguage(kEnglish);
  EXPECT_EQ(catalogue.GetMessageText(1041), L"Quillgate - Log on");
  catalogue.SetInterfaceLanguage(kSwedish);
  EXPECT_EQ(catalogue.GetMessageText(1041), L"Quillgate - Inloggning");
}

TEST_F(MessageCatalogueTest, InsertsStandInTheirPlaces) {
  MessageCatalogue catalogue;
  catalogue.SetInterfaceLanguage(kEnglish);
  EXPECT_EQ(catalogue.GetMessageText(kMsgMinutesLeft, 5u),
            L"You have less than 5 minutes left before the Internet connection will be disabled.");
  EXPECT_EQ(catalogue.GetMessageText(10012, 0u, 1u, 60u),
            L"The value 0 is invalid. It must be in the range 1 - 60.");
  EXPECT_EQ(catalogue.GetMessageText(kMsgMegabytesLeft, 4294967295u),
            L"You may only download 4294967295 megabytes more before the Internet connection will "
            L"be disabled.");
}

TEST_F(MessageCatalogueTest, PlaceholdersOfALaterFormattingAreLeft) {
  MessageCatalogue catalogue;
  catalogue.SetInterfaceLanguage(kEnglish);
  EXPECT_EQ(catalogue.GetMessageText(1102),
            L"Total time online: %s (hh:mm:ss), total downloads: %s (MB), total uploads: %s (MB)");
}

TEST_F(MessageCatalogueTest, OnlyOneTextEndsWithALineBreak) {
  MessageCatalogue catalogue;
  for (const DWORD language : {kEnglish, kSwedish}) {
    catalogue.SetInterfaceLanguage(language);
    EXPECT_TRUE(catalogue.GetMessageText(10005).ends_with(L"\r\n")) << language;
    EXPECT_EQ(catalogue.GetMessageText(100), L"Quillgate") << language;
  }
}

TEST_F(MessageCatalogueTest, AMissingTextIsEmpty) {
  MessageCatalogue catalogue;
  EXPECT_EQ(catalogue.GetMessageText(999), L"");
  catalogue.SetInterfaceLanguage(1036);  // French, which there is no catalogue for
  EXPECT_EQ(catalogue.GetMessageText(100), L"");
}

TEST_F(MessageCatalogueTest, LanguagesHaveNativeNamesWithACapital) {
  LanguageList languages = MessageCatalogue().GetLanguageList();
  std::ranges::sort(languages, {}, &LanguageEntry::id);
  ASSERT_EQ(languages.size(), 2u);
  EXPECT_EQ(languages[0].id, kEnglish);
  EXPECT_EQ(languages[0].nativeName, L"English");
  EXPECT_EQ(languages[1].id, kSwedish);
  EXPECT_EQ(languages[1].nativeName, L"Svenska");
}

}  // namespace
}  // namespace quillgate
