#include "text/message_catalogue.h"

#include <gmock/gmock.h>

#include <tuple>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::FieldsAre;
using testing::UnorderedElementsAre;

constexpr DWORD kEnglish = 1033;
constexpr DWORD kSwedish = 1053;
constexpr DWORD kFrench = 1036;  // which there is no catalogue for

class MessageCatalogueTest : public testing::Test {
 protected:
  MessageCatalogueTest() { machine_.SetLocale(static_cast<LANGID>(kSwedish), 0); }

  platform::SimulatedMachine machine_;
};

TEST_F(MessageCatalogueTest, StartsInTheSystemsLanguageAndForcesTheDefaultSublanguage) {
  MessageCatalogue catalogue;
  EXPECT_EQ(catalogue.InterfaceLanguageId(), kSwedish);
  const std::pair<DWORD, LANGID> cases[] = {
      {0, 0x0400}, {kEnglish, 0x0409}, {kSwedish, 0x041D}, {9, 0x0409}, {0x1234041D, 0x041D}};
  for (const auto& [chosen, stored] : cases) {
    catalogue.SetInterfaceLanguage(chosen);
    EXPECT_EQ(catalogue.InterfaceLanguageId(), stored) << chosen;
  }
}

TEST_F(MessageCatalogueTest, TextsAreThoseOfTheChosenLanguageOrElseTheUsers) {
  const std::tuple<DWORD, DWORD, const wchar_t*> cases[] = {
      {0, 1041, L"Quillgate - Inloggning"},
      {kEnglish, 1041, L"Quillgate - Log on"},
      {kSwedish, 1041, L"Quillgate - Inloggning"},
      {kSwedish, 100, L"Quillgate"},
      {kEnglish, 999, L""},
      {kFrench, 100, L""},
      // With the places of a later formatting.
      {kEnglish, 1102,
       L"Total time online: %s (hh:mm:ss), total downloads: %s (MB), total uploads: %s (MB)"},
  };
  MessageCatalogue catalogue;
  for (const auto& [language, message, text] : cases) {
    catalogue.SetInterfaceLanguage(language);
    EXPECT_EQ(catalogue.GetMessageText(message), text) << language;
  }
  catalogue.SetInterfaceLanguage(kSwedish);
  EXPECT_TRUE(catalogue.GetMessageText(10005).ends_with(L"\r\n")) << "the one with a line break";
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

TEST_F(MessageCatalogueTest, LanguagesHaveNativeNamesWithACapital) {
  EXPECT_THAT(
      MessageCatalogue().GetLanguageList(),
      UnorderedElementsAre(FieldsAre(L"English", kEnglish), FieldsAre(L"Svenska", kSwedish)));
}

}  // namespace
}  // namespace quillgate
