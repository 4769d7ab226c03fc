// The editor of connection hours on the screen: what clicks and drags do to the table.
#include "settings/hours_dialog.h"

#include "grid/grid_messages.h"
#include "hours_test.h"

namespace quillgate {
namespace {

class HoursDialogTest : public HoursTest {};

using testing::ElementsAre;
using testing::IsEmpty;

void End(HoursUser& user, int button) {
  user.Script().Click(user.Window(), button);
}

TEST_F(HoursDialogTest, AClickTogglesTheHourThatStandsThere) {
  struct Case {
    const wchar_t* firstDay;  // null: there is no setting
    GridCell cell;
    std::size_t index;
  };
  for (const Case& each :
       {Case{nullptr, {1, 1}, 24}, Case{nullptr, {7, 1}, 0}, Case{nullptr, {6, 24}, 167},
        Case{L"0", {1, 1}, 0}, Case{L"0", {7, 24}, 167}, Case{L"3", {1, 5}, 76},
        Case{L"3", {4, 24}, 167}, Case{L"3", {5, 1}, 0}, Case{L"6", {1, 1}, 144},
        Case{L"7", {1, 1}, 0}, Case{L"7", {7, 24}, 167}, Case{L"Monday", {2, 2}, 25}}) {
    if (each.firstDay != nullptr) BeginWeekWith(each.firstDay);
    hours_.fill(false);
    EXPECT_TRUE(Run([&](HoursUser& user) {
      user.Click(each.cell);
      EXPECT_TRUE(user.IsBlocked(each.cell));
      End(user, IDOK);
    }));
    EXPECT_THAT(Blocked(), ElementsAre(each.index)) << each.cell.row << ", " << each.cell.col;
  }
}

TEST_F(HoursDialogTest, ABlockedHourIsAllowedByAClick) {
  hours_.fill(true);
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.Click({1, 9});
    EXPECT_FALSE(user.IsBlocked({1, 9}));
    End(user, IDOK);
  }));
  EXPECT_EQ(Blocked().size(), hours_.size() - 1);
  EXPECT_FALSE(hours_[24 + 8]);
}

TEST_F(HoursDialogTest, ADragTogglesEachCellAsOftenAsItIsEntered) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.MoveTo({2, 3});
    user.Press();
    EXPECT_TRUE(user.IsBlocked({2, 3})) << "by the click alone";
    user.MoveTo({2, 3}, 5);
    EXPECT_TRUE(user.IsBlocked({2, 3})) << "the pointer was in it already";
    user.MoveTo({2, 4});
    EXPECT_TRUE(user.IsBlocked({2, 4}));
    user.MoveTo({2, 4}, 5);
    EXPECT_TRUE(user.IsBlocked({2, 4})) << "once per entry";
    user.MoveTo({2, 3});
    EXPECT_FALSE(user.IsBlocked({2, 3}));
    user.MoveTo({2, 4});
    EXPECT_FALSE(user.IsBlocked({2, 4}));
    user.MoveTo({2, 3});
    user.MoveTo({3, 3});
    user.Release();
    End(user, IDOK);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(2 * 24 + 2, 3 * 24 + 2));
}

TEST_F(HoursDialogTest, ADragAcrossTheHeadingsEntersTheCellBelowAgain) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.MoveTo({1, 2});
    user.Press();
    user.MoveTo({0, 2});
    user.MoveTo({1, 2});
    EXPECT_FALSE(user.IsBlocked({1, 2}));
    user.MoveTo({1, 1});
    user.MoveTo({1, 0});
    user.Release();
    End(user, IDOK);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(24));
}

TEST_F(HoursDialogTest, MovesWithTheButtonUpAndPressesOnHeadingsChangeNothing) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.MoveTo({1, 1});
    user.MoveTo({1, 2});
    user.Click({0, 5});
    user.Click({5, 0});
    user.Click({0, 0});
    user.MoveTo({5, 5});
    End(user, IDOK);
  }));
  EXPECT_THAT(Blocked(), IsEmpty());
}

TEST_F(HoursDialogTest, ADoubleClickTogglesTwice) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.DoubleClick({3, 3});
    EXPECT_FALSE(user.IsBlocked({3, 3}));
    user.Click({3, 4});
    End(user, IDOK);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(3 * 24 + 3));
}

TEST_F(HoursDialogTest, CancelAndEscapeLeaveTheTableAsItWas) {
  for (const bool byKey : {false, true}) {
    EXPECT_FALSE(Run([&](HoursUser& user) {
      user.Click({1, 1});
      user.Click({2, 2});
      EXPECT_TRUE(user.IsBlocked({2, 2}));
      if (byKey) {
        user.Script().Key(Qt::Key_Escape);
      } else {
        End(user, IDCANCEL);
      }
    }));
    EXPECT_THAT(Blocked(), IsEmpty());
  }
}

TEST_F(HoursDialogTest, EnterIsOkAndTabPassesTheGridBy) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    QWidget* ok = user.Script().Child(user.Window(), IDOK);
    QWidget* cancel = user.Script().Child(user.Window(), IDCANCEL);
    user.Script().Await([&] { return ok->hasFocus(); }, "focus on OK");
    user.Script().Key(Qt::Key_Tab);
    user.Script().Await([&] { return cancel->hasFocus(); }, "focus on Cancel");
    user.Script().Key(Qt::Key_Tab);
    user.Script().Await([&] { return ok->hasFocus(); }, "focus on OK again");
    user.Script().Key(Qt::Key_Return);
  }));
}

TEST_F(HoursDialogTest, ASecondEditorBeginsWithWhatTheFirstHasLeft) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.Click({1, 1});
    End(user, IDOK);
  }));
  EXPECT_TRUE(Run([](HoursUser& user) {
    EXPECT_TRUE(user.IsBlocked({1, 1}));
    EXPECT_FALSE(user.IsBlocked({1, 2}));
    user.Click({1, 2});
    End(user, IDOK);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(24, 25));
}

TEST_F(HoursDialogTest, WithoutAGridTheTextsAreThereAndOkChangesNothing) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  ::UnregisterClassW(kGridClassName, instance);
  WNDCLASSW refusing{};
  refusing.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    return message == WM_CREATE ? -1 : ::DefWindowProcW(window, message, wParam, lParam);
  };
  refusing.hInstance = instance;
  refusing.lpszClassName = kGridClassName;
  ASSERT_NE(::RegisterClassW(&refusing), 0);
  hours_[5] = true;
  HoursDialog dialog(ui_, settings_, nullptr, hours_);
  DesktopScript script([&](DesktopScript& steps) {
    QWidget* window = steps.AwaitWindow("Connection hours");
    const HWND dialogWindow = steps.HandleOf(window);
    steps.Do([&] { EXPECT_EQ(::GetDlgItem(dialogWindow, kHoursGridId), nullptr); });
    EXPECT_FALSE(steps.TextOf(steps.Child(window, IDC_HOURS_EXPLANATION)).isEmpty());
    steps.Click(window, IDOK);
  });
  EXPECT_TRUE(dialog.Run());
  EXPECT_EQ(dialog.Hours(), hours_);
  EXPECT_TRUE(::UnregisterClassW(kGridClassName, instance));
}

}  // namespace
}  // namespace quillgate
