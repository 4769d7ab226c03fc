// Popup menus on the simulated machine, and without a desktop.
#include "platform/user/menu_tracking.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kit/failing_call.h"
#include "platform/kit/hidden_window.h"
#include "platform/menu/menu_fixture.h"
#include "platform/testing/simulated_machine.h"

namespace {

class MenuTracking : public ::testing::Test {
 protected:
  UINT Track(UINT flags = TPM_RETURNCMD) {
    return static_cast<UINT>(::TrackPopupMenuEx(menu_.Get(), flags, 20, 30, owner_.Get(), nullptr));
  }

  platform::SimulatedMachine machine_;
  const HiddenWindow owner_;
  const OwnedMenu menu_;
};

TEST_F(MenuTracking, AMenuIsShownAsItIsAndItsAnswerReturned) {
  const HMENU submenu = ::CreatePopupMenu();
  InsertItem(menu_.Get(), 5, L"Statistics...");
  InsertItem(menu_.Get(), 2, L"Help", submenu);
  InsertItem(submenu, 11, L"About");
  ::SetMenuDefaultItem(menu_.Get(), 5, FALSE);
  machine_.AnswerMenus({11});
  EXPECT_EQ(Track(), 11u);
  EXPECT_EQ(Track(), 0u);
  ASSERT_EQ(machine_.Menus().size(), 2u);
  const platform::TrackedMenu shown = machine_.Menus()[0];
  EXPECT_EQ(shown.owner, owner_.Get());
  EXPECT_EQ(shown.place.x, 20);
  EXPECT_EQ(shown.place.y, 30);
  ASSERT_EQ(shown.items.size(), 2u);
  EXPECT_EQ(shown.items[0].text, L"Statistics...");
  EXPECT_TRUE(shown.items[0].isDefault);
  ASSERT_EQ(shown.items[1].submenu.size(), 1u);
  EXPECT_EQ(shown.items[1].submenu[0].command, 11u);
}

TEST_F(MenuTracking, AMenuIsRefusedWhileOneIsOpenAndWithoutADesktop) {
  constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
  MENUITEMINFOW item = AskFor(MIIM_FTYPE);
  item.fType = 0x4;  // MFT_BITMAP
  platform::SetMenuTracker([&](const platform::TrackedMenu&) {
    ExpectFailures({{"a second menu", [this] { return Track(); }, ERROR_POPUP_ALREADY_ACTIVE}});
    return 4u;
  });
  EXPECT_EQ(Track(), 4u);
  EXPECT_EQ(Track(), 4u);
  platform::SetMenuTracker({});
  ::testing::internal::CaptureStderr();
  ExpectFailures({
      {"no desktop", [this] { return Track(); }, ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
      {"no answer", [this] { return Track(0); }, kInvalid},
      {"a picture", [&] { return ::InsertMenuItemW(menu_.Get(), 0, TRUE, &item); }, kInvalid},
  });
  EXPECT_THAT(::testing::internal::GetCapturedStderr(), ::testing::HasSubstr("popup menu"));
}

}  // namespace
