// Which template is taken, and which are refused.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/dialog/scripted_dialog.h"
#include "platform/dialog/template_bytes.h"
#include "platform/kernel/locale_source.h"
#include "platform/kit/failing_call.h"

namespace {

constexpr LANGID kSwedish = MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT);

ResourceBytes Titled(std::u16string_view title) {
  return TemplateBytes(kDialogStyle, {0, 0, 100, 50}, title).Bytes();
}

TEST(TemplateChoice, TheUsersLanguageComesBeforeTheNeutralOneAndAnyOther) {
  const std::pair english(MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT), Titled(u"English"));
  const std::pair neutral(MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL), Titled(u"Neutral"));
  const std::pair swedish(kSwedish, Titled(u"Svenska"));
  platform::SetLocaleChoice(platform::LocaleChoice{kSwedish, 0});
  ScriptedDialog dialog;
  for (const auto& [name, title] :
       {std::pair{AddTemplates({english, neutral, swedish}), L"Svenska"},
        {AddTemplates({english, neutral}), L"Neutral"},
        {AddTemplates({english}), L"English"}}) {
    EXPECT_EQ(TextOf(dialog.Create(name)), title);
    ::DestroyWindow(dialog.Window());
  }
  platform::SetLocaleChoice(std::nullopt);
}

TEST(TemplateChoice, UnknownStylesClassesAndNamesMakeNoDialog) {
  constexpr DWORD kUnknownStyle = 0x1000;
  const LPCWSTR style = AddTemplate(TemplateBytes(kDialogStyle | kUnknownStyle, {}, u"T"));
  const LPCWSTR item = AddTemplate(
      TemplateBytes(kDialogStyle, {}, u"T").Item(u"Missed of", 1, kItem, {0, 0, 9, 9}, u""));
  ScriptedDialog dialog;
  ExpectFailures({
      {"style", [&] { return dialog.Create(style); }, ERROR_INVALID_PARAMETER},
      {"class", [&] { return dialog.Create(item); }, ERROR_CANNOT_FIND_WND_CLASS},
      {"name", [&] { return dialog.Create(L"Name"); }, ERROR_RESOURCE_NAME_NOT_FOUND},
  });
}

}  // namespace
