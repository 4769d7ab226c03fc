// What dialogs take from their templates.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/dialog/scripted_dialog.h"
#include "platform/dialog/template_bytes.h"
#include "platform/kernel/locale_source.h"

namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT;
constexpr DWORD kItem = WS_CHILD | WS_VISIBLE;
constexpr LANGID kSwedish = MAKELANGID(LANG_SWEDISH, SUBLANG_DEFAULT);
constexpr LANGID kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_DEFAULT);
constexpr LANGID kNeutral = MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL);

std::wstring TextOf(HWND window) {
  wchar_t text[100] = L"";
  ::GetWindowTextW(window, text, 100);
  return text;
}

RECT PlaceInDialog(HWND control) {
  RECT place{};
  ::GetWindowRect(control, &place);
  ::MapWindowPoints(nullptr, ::GetParent(control), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

TemplateBytes Titled(std::u16string_view title) {
  return TemplateBytes(kStyle, {0, 0, 100, 50}, title);
}

TEST(DialogTemplate, ADialogHasTheTextsNumbersAndPlacesOfItsTemplate) {
  TemplateBytes bytes(kStyle, {10, 20, 100, 50}, u"Größe \U0001D11E");
  bytes.Item(u"Static", 1001, kItem, {4, 8, 40, 16}, u"&Name:", 0x80690001);
  bytes.Item(0x80, IDOK, kItem | BS_DEFPUSHBUTTON, {50, 30, 45, 14}, u"OK");
  ScriptedDialog dialog;
  const HWND window = dialog.Create(AddTemplate(bytes));
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(TextOf(window), L"Größe \U0001D11E");
  const HWND label = ::GetDlgItem(window, 1001);
  EXPECT_EQ(TextOf(label), L"&Name:");
  EXPECT_EQ(::GetWindowContextHelpId(label), 0x80690001u);
  EXPECT_EQ(::GetDlgCtrlID(::GetDlgItem(window, IDOK)), IDOK);
  EXPECT_EQ(::GetParent(label), window);

  // The unit rectangle of the whole dialog, and of a control, in pixels.
  RECT units = {4, 8, 44, 24};
  ASSERT_TRUE(::MapDialogRect(window, &units));
  const RECT place = PlaceInDialog(label);
  EXPECT_EQ(place.left, units.left);
  EXPECT_EQ(place.top, units.top);
  EXPECT_EQ(place.right, units.right);
  EXPECT_EQ(place.bottom, units.bottom);
}

TEST(DialogTemplate, UnitsFollowTheDialogsFont) {
  ScriptedDialog dialog;
  const HWND window = dialog.Create(AddTemplate(Titled(u"Units")));
  const auto font = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
  const HDC context = ::GetDC(window);
  const HGDIOBJ before = ::SelectObject(context, font);
  const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  SIZE extent{};
  ::GetTextExtentPoint32W(context, letters.c_str(), static_cast<int>(letters.size()), &extent);
  ::SelectObject(context, before);
  ::ReleaseDC(window, context);
  RECT units = {0, 0, 4, 8};
  ASSERT_TRUE(::MapDialogRect(window, &units));
  EXPECT_EQ(units.right, (extent.cx / 26 + 1) / 2);
  EXPECT_EQ(units.bottom, extent.cy);
}

TEST(DialogTemplate, BytesThatEndTooEarlyAreRefused) {
  TemplateBytes bytes = Titled(u"Cut");
  bytes.Item(u"Button", IDOK, kItem, {0, 0, 50, 14}, u"OK");
  const std::vector<std::byte>& whole = bytes.Bytes();
  ScriptedDialog dialog;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::vector<std::byte> cut(whole.begin(), whole.begin() + static_cast<int>(length));
    EXPECT_EQ(dialog.Create(AddTemplate(cut)), nullptr) << length << " bytes";
  }
  EXPECT_NE(dialog.Create(AddTemplate(whole)), nullptr);
}

TEST(DialogTemplate, WhatIsNotSupportedFailsWithTheDocumentedResult) {
  ScriptedDialog dialog;
  EXPECT_EQ(dialog.Create(AddTemplate(TemplateBytes(kStyle | 0x1000, {0, 0, 9, 9}, u"T"))),
            nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(dialog.Run(MAKEINTRESOURCEW(9)), -1);
  EXPECT_EQ(::GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
  TemplateBytes bytes = Titled(u"Unknown");
  bytes.Item(u"Unheard of", 1, kItem, {0, 0, 9, 9}, u"");
  EXPECT_EQ(dialog.Create(AddTemplate(bytes)), nullptr);
}

TEST(DialogTemplate, TheUsersLanguageComesBeforeTheNeutralOneAndAnyOther) {
  const LPCWSTR all = AddTemplates({{kEnglish, Titled(u"English")},
                                    {kNeutral, Titled(u"Neutral")},
                                    {kSwedish, Titled(u"Svenska")}});
  const LPCWSTR noSwedish =
      AddTemplates({{kEnglish, Titled(u"English")}, {kNeutral, Titled(u"Neutral")}});
  const LPCWSTR englishOnly = AddTemplates({{kEnglish, Titled(u"English")}});
  platform::SetLocaleChoice(platform::LocaleChoice{kSwedish, 0});
  ScriptedDialog dialog;
  for (const auto& [name, title] : {std::pair{all, L"Svenska"}, std::pair{noSwedish, L"Neutral"},
                                    std::pair{englishOnly, L"English"}}) {
    const HWND window = dialog.Create(name);
    EXPECT_EQ(TextOf(window), title);
    ::DestroyWindow(window);
  }
  platform::SetLocaleChoice(std::nullopt);
}

}  // namespace
