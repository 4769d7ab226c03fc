// The editor of connection hours on the screen: what clicks and drags do to the table.
#include "hours_test.h"

namespace quillgate {
namespace {

class HoursDialogTest : public HoursTest {};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(HoursDialogTest, AClickTogglesTheHourThatStandsThere) {
  const struct {
    const wchar_t* firstDay;  // null: there is no setting
    GridCell cell;
    std::size_t index;
  } cases[] = {{nullptr, {1, 1}, 24}, {nullptr, {7, 1}, 0}, {nullptr, {6, 24}, 167},
               {L"0", {1, 1}, 0},     {L"0", {7, 24}, 167}, {L"3", {1, 5}, 76},
               {L"3", {4, 24}, 167},  {L"3", {5, 1}, 0},    {L"6", {1, 1}, 144},
               {L"7", {1, 1}, 0},     {L"7", {7, 24}, 167}, {L"Monday", {2, 2}, 25}};
  for (const auto& each : cases) {
    if (each.firstDay != nullptr) BeginWeekWith(each.firstDay);
    hours_.fill(false);
    EXPECT_TRUE(Run([&](HoursUser& user) {
      user.Click(each.cell);
      EXPECT_TRUE(user.IsBlocked(each.cell));
      user.End(IDOK);
    }));
    EXPECT_THAT(Blocked(), ElementsAre(each.index)) << each.cell.row << ", " << each.cell.col;
  }
}

TEST_F(HoursDialogTest, ADragTogglesEachCellAsOftenAsItIsEntered) {
  const struct {
    const char* what;
    GridCell cell;
    int offset;
    bool isBlocked;
  } moves[] = {
      {"still in the first, which the click has toggled", {2, 3}, 5, true},
      {"the second", {2, 4}, 0, true},
      {"still there", {2, 4}, 5, true},
      {"back in the first", {2, 3}, 0, false},
      {"the second again", {2, 4}, 0, false},
      {"the first again", {2, 3}, 0, true},
      {"below", {3, 3}, 0, true},
      {"the first row", {1, 2}, 0, true},
      {"a heading", {0, 2}, 0, false},
      {"the first row again", {1, 2}, 0, false},
      {"a day", {1, 0}, 0, false},
  };
  EXPECT_TRUE(Run([&](HoursUser& user) {
    user.MoveTo({2, 3});
    user.Act(QTest::MousePress);
    for (const auto& each : moves) {
      user.MoveTo(each.cell, each.offset);
      EXPECT_EQ(user.IsBlocked(each.cell), each.isBlocked) << each.what;
    }
    user.Act(QTest::MouseRelease);
    user.End(IDOK);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(2 * 24 + 2, 3 * 24 + 2));
}

TEST_F(HoursDialogTest, MovesWithTheButtonUpAndPressesOnHeadingsAndDoubleClicksChangeNothing) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    user.MoveTo({1, 1});
    user.MoveTo({1, 2});
    for (const GridCell heading : {GridCell{0, 5}, {5, 0}, {0, 0}})
      user.Click(heading);
    user.MoveTo({5, 5});
    user.MoveTo({3, 3});
    user.Act(QTest::MouseDClick);
    user.End(IDOK);
  }));
  EXPECT_THAT(Blocked(), IsEmpty());
}

TEST_F(HoursDialogTest, CancelAndEscapeLeaveTheTableAsItWas) {
  const std::function<void(HoursUser&)> ways[] = {
      [](HoursUser& user) { user.End(IDCANCEL); },
      [](HoursUser& user) { user.Script().Key(Qt::Key_Escape); }};
  for (const auto& leave : ways) {
    EXPECT_FALSE(Run([&](HoursUser& user) {
      user.Click({2, 2});
      EXPECT_TRUE(user.IsBlocked({2, 2}));
      leave(user);
    }));
    EXPECT_THAT(Blocked(), IsEmpty());
  }
}

TEST_F(HoursDialogTest, EnterIsOkAndTabPassesTheGridBy) {
  EXPECT_TRUE(Run([](HoursUser& user) {
    for (const int id : {IDOK, IDCANCEL, IDOK}) {
      const QWidget* button = user.Child(id);
      user.Script().Await([&] { return button->hasFocus(); }, QString("focus on %1").arg(id));
      user.Script().Key(Qt::Key_Tab);
    }
    user.Script().Key(Qt::Key_Tab);
    user.Script().Key(Qt::Key_Return);
  }));
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
