// What all controls have in common: registration, kinds, unknown messages and life without widgets.
#include <thread>

#include "platform/controls/control_test.h"

namespace {

TEST(CommonControls, FamiliesThatDoNotExistAreNotRegistered) {
  constexpr DWORD kSize = sizeof(INITCOMMONCONTROLSEX);
  constexpr DWORD kRebars = 0x400;
  constexpr DWORD kTreeViews = 0x2;
  for (const auto& [size, classes, expected] : {std::tuple{kSize, 0x11Du, TRUE},
                                                {kSize, ICC_STANDARD_CLASSES, TRUE},
                                                {kSize, kRebars, FALSE},
                                                {kSize, 0x11D | kTreeViews, FALSE},
                                                {kSize, 0u, FALSE},
                                                {kSize - 1, 0x11Du, FALSE}}) {
    const INITCOMMONCONTROLSEX wanted = {size, classes};
    EXPECT_EQ(::InitCommonControlsEx(&wanted), expected) << std::hex << classes;
  }
  EXPECT_FALSE(::InitCommonControlsEx(nullptr));
}

using AnyControl = ControlTest;

TEST_F(AnyControl, UnsupportedStylesMakeNoControl) {
  for (const auto& [name, style] : {std::pair{L"BUTTON", 0x000Bu},        // drawn by the owner
                                    {L"COMBOBOX", 0x0002u},               // with a field
                                    {L"EDIT", 0x0004u},                   // of several lines
                                    {WC_LISTVIEW, 0u},                    // icons
                                    {WC_LISTVIEW, LVS_REPORT | 0x0400u},  // drawn by the owner
                                    {L"STATIC", 0x000Du},                 // drawn by the owner
                                    {TOOLTIPS_CLASSW, 0x1000u}}) {
    EXPECT_EQ(Make(name, style), nullptr) << ::testing::PrintToString(name) << " " << style;
  }
}

TEST_F(AnyControl, UnknownMessagesAreAnsweredWithTheDocumentedFailure) {
  for (const auto& [name, style, message, expected] :
       {std::tuple{L"COMBOBOX", CBS_DROPDOWNLIST, 0x0152u, LRESULT{CB_ERR}},
        {L"EDIT", 0u, 0x00C4u, 0},
        {WC_LISTVIEW, LVS_REPORT, LVM_FIRST + 16u, 0},
        {WC_TABCONTROL, 0u, TCM_FIRST + 8u, 0},
        {UPDOWN_CLASS, 0u, WM_USER + 107u, 0},
        {DATETIMEPICK_CLASS, 0u, DTM_FIRST + 8u, 0}}) {
    EXPECT_EQ(Send(Make(name, style), message), expected) << message;
  }
}

// Windows of a thread that is not the window thread have no widgets.
TEST_F(AnyControl, ControlsKeepTheirStateWithoutADesktop) {
  std::thread([] {
    HWND parent =
        ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 99, 99, nullptr, nullptr, nullptr, nullptr);
    const auto make = [&](const wchar_t* name, DWORD style) {
      return ::CreateWindowExW(0, name, L"text", WS_CHILD | style, 0, 0, 50, 50, parent, nullptr,
                               ::GetModuleHandleW(nullptr), nullptr);
    };
    HWND edit = make(L"EDIT", 0);
    Send(edit, EM_SETSEL, 1, 3);
    EXPECT_EQ(Send(edit, EM_GETSEL), MAKELONG(1, 3));
    EXPECT_EQ(TextOf(edit), L"text");
    HWND box = make(L"BUTTON", BS_AUTOCHECKBOX);
    Send(box, BM_CLICK);
    EXPECT_EQ(Send(box, BM_GETCHECK), BST_CHECKED);
    HWND combo = make(L"COMBOBOX", CBS_DROPDOWNLIST);
    Send(combo, CB_ADDSTRING, 0, L"one");
    Send(combo, CB_SETCURSEL, 0);
    EXPECT_EQ(TextOf(combo), L"one");
    HWND list = make(WC_LISTVIEW, LVS_REPORT);
    LVITEMW item{};
    EXPECT_EQ(ListView_InsertItem(list, &item), 0);
    EXPECT_FALSE(ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE)) << "nothing can be measured";
    HWND upDown = make(UPDOWN_CLASS, UDS_AUTOBUDDY);
    EXPECT_EQ(reinterpret_cast<HWND>(Send(upDown, UDM_GETBUDDY)), list);
    const SYSTEMTIME date = {2024, 5, 0, 1, 0, 0, 0, 0};
    EXPECT_TRUE(Send(make(DATETIMEPICK_CLASS, 0), DTM_SETSYSTEMTIME, GDT_VALID, &date));
    EXPECT_TRUE(::DestroyWindow(parent));
  }).join();
}

TEST_F(AnyControl, KeysOfTextsGoToTheNextControlThatTakesInput) {
  WidgetOf(Parent())->setProperty("dialog", true);  // keys of texts count in dialogs only
  HWND label = Make(L"STATIC", SS_LEFT, L"&Name:");
  ::EnableWindow(Make(L"EDIT", 0), FALSE);
  ::ShowWindow(Make(L"EDIT", 0), SW_HIDE);
  HWND name = Make(L"EDIT", 0);
  Make(L"BUTTON", BS_GROUPBOX, L"&Group");
  Make(L"STATIC", SS_LEFT | SS_NOPREFIX, L"R&D");
  HWND grouped = Make(L"EDIT", 0);
  HWND last = Make(L"EDIT", 0);
  const auto goesTo = [&](Qt::Key key, HWND expected) {
    Focus(last);
    Press(last, key, Qt::AltModifier);
    return WidgetOf(expected)->hasFocus();
  };
  EXPECT_TRUE(goesTo(Qt::Key_N, name));
  EXPECT_TRUE(goesTo(Qt::Key_G, grouped));
  EXPECT_TRUE(goesTo(Qt::Key_D, last)) << "the text has no key";
  ::SetWindowTextW(label, L"Na&me:");
  EXPECT_TRUE(goesTo(Qt::Key_N, last)) << "the old key still counts";
  EXPECT_TRUE(goesTo(Qt::Key_M, name));
}

}  // namespace
