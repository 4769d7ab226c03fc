// The registration of the common controls.
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

}  // namespace
