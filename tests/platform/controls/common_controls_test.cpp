// The registration of the common controls.
#include <thread>

#include "platform/controls/control_test.h"

namespace {

struct Registration {
  DWORD size;
  DWORD classes;
  BOOL expected;
};
constexpr DWORD kSize = sizeof(INITCOMMONCONTROLSEX);
constexpr Registration kRegistrations[] = {
    {kSize, 0x11D, TRUE},        {kSize, ICC_STANDARD_CLASSES, TRUE},
    {kSize, 0x400, FALSE},  // rebars
    {kSize, 0x11D | 0x2, FALSE}, {kSize, 0, FALSE},
    {kSize - 1, 0x11D, FALSE},
};

TEST(CommonControls, FamiliesThatDoNotExistAreRefused) {
  for (const Registration& each : kRegistrations) {
    const INITCOMMONCONTROLSEX classes = {each.size, each.classes};
    EXPECT_EQ(::InitCommonControlsEx(&classes), each.expected) << std::hex << each.classes;
  }
  EXPECT_FALSE(::InitCommonControlsEx(nullptr));
}

class UnknownMessages : public ControlTest {};

TEST_F(UnknownMessages, AreAnsweredWithTheDocumentedFailure) {
  EXPECT_EQ(Send(Make(L"COMBOBOX", CBS_DROPDOWNLIST), 0x0151 + 1), CB_ERR);
  EXPECT_EQ(Send(Make(L"EDIT", 0), 0x00C4), 0);
  EXPECT_EQ(Send(Make(WC_LISTVIEW, LVS_REPORT), LVM_FIRST + 16), 0);
  EXPECT_EQ(Send(Make(WC_TABCONTROL, 0), TCM_FIRST + 8), 0);
  EXPECT_EQ(Send(Make(UPDOWN_CLASS, 0), WM_USER + 107), 0);
  EXPECT_EQ(Send(Make(DATETIMEPICK_CLASS, 0), DTM_FIRST + 8), 0);
}

class WithoutDesktop : public ControlTest {};

// Windows of a thread that is not the window thread have no widgets.
TEST_F(WithoutDesktop, ControlsKeepTheirStateAllTheSame) {
  std::thread([] {
    HWND parent = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 99, 99, nullptr, nullptr,
                                    ::GetModuleHandleW(nullptr), nullptr);
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

}  // namespace
