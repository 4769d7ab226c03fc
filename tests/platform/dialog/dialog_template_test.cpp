// What dialogs take from their templates.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/dialog/scripted_dialog.h"
#include "platform/dialog/template_bytes.h"

namespace {

TEST(DialogTemplate, ADialogHasItsTextsAndNumbersAndItsPlacesInUnitsOfTheFont) {
  TemplateBytes bytes(kDialogStyle & ~DWORD{DS_CENTER}, {10, 20, 100, 50}, u"Größe \U0001D11E");
  bytes.Item(u"Static", 1001, kItem, {4, 8, 40, 16}, u"&Name:", 0x80690001);
  bytes.Item(kButton, IDOK, kItem | BS_DEFPUSHBUTTON, {50, 30, 45, 14}, u"OK");
  ScriptedDialog dialog;
  const HWND window = dialog.Create(AddTemplate(bytes));
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(TextOf(window), L"Größe \U0001D11E");
  const HWND label = ::GetDlgItem(window, 1001);
  EXPECT_EQ(TextOf(label), L"&Name:");
  EXPECT_EQ(::GetDlgCtrlID(::GetDlgItem(window, IDOK)), IDOK);
  EXPECT_EQ(::GetParent(label), window);

  const HDC context = ::GetDC(window);
  const HGDIOBJ before =
      ::SelectObject(context, reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0)));
  const std::wstring letters = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  SIZE extent{};
  ::GetTextExtentPoint32W(context, letters.c_str(), static_cast<int>(letters.size()), &extent);
  ::SelectObject(context, before);
  ::ReleaseDC(window, context);
  const LONG averageWidth = (extent.cx / 26 + 1) / 2;
  RECT place{};
  ::GetWindowRect(label, &place);
  POINT corner = {place.left, place.top};
  ::ScreenToClient(window, &corner);
  EXPECT_EQ(corner.x, ::MulDiv(4, averageWidth, 4));
  EXPECT_EQ(corner.y, ::MulDiv(8, extent.cy, 8));
  EXPECT_EQ(place.right - place.left, ::MulDiv(40, averageWidth, 4));
  EXPECT_EQ(place.bottom - place.top, ::MulDiv(16, extent.cy, 8));
  RECT mapped{4, 8, 44, 24};
  EXPECT_TRUE(::MapDialogRect(window, &mapped));
  EXPECT_EQ(mapped.left, corner.x);
  EXPECT_EQ(mapped.bottom, ::MulDiv(24, extent.cy, 8));
  EXPECT_FALSE(::MapDialogRect(label, &mapped));
}

TEST(DialogTemplate, BytesThatEndTooEarlyMakeNoDialog) {
  TemplateBytes bytes(kDialogStyle, {0, 0, 100, 50}, u"Cut");
  bytes.Item(u"Button", IDOK, kItem, {0, 0, 50, 14}, u"OK");
  const ResourceBytes whole = bytes.Bytes();
  ScriptedDialog dialog;
  for (ResourceBytes cut; cut.size() < whole.size(); cut.push_back(whole[cut.size()]))
    EXPECT_EQ(dialog.Create(AddTemplate(cut)), nullptr) << cut.size() << " bytes";
  EXPECT_NE(dialog.Create(AddTemplate(whole)), nullptr);
}

}  // namespace
