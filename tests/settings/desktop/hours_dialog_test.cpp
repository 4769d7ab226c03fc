// The editor of connection hours on the screen: what it shows, and what clicks and drags do to the
// table.
#include "settings/hours_dialog.h"

#include <QTest>
#include <QWindow>
#include <array>
#include <vector>

#include "frame/desktop/frame_test.h"
#include "grid/grid_messages.h"
#include "grid/grid_types.h"
#include "handles/gdi_handles.h"
#include "settings/hours_grid.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A script's hands on the editor's grid, by cells. All calls are made by the script.
class HoursUser {
 public:
  HoursUser(DesktopScript& running, QWidget* editor)
      : script(running), window(editor), grid(running.Child(editor, kHoursGridId)) {}

  // With the left button, where the pointer is; returns when the editor has heard.
  void Act(QTest::MouseAction action) {
    script.Do([&] {
      QTest::mouseEvent(action, window->windowHandle(), Qt::LeftButton, Qt::NoModifier, pointer_);
    });
    AwaitReceived();
  }
  // Into the cell, its middle or so many pixels right of it.
  void MoveTo(GridCell cell, int offset = 0) {
    script.Do([&] {
      pointer_ = grid->mapTo(window, MiddleOf(cell) + QPoint(offset, 0));
      QTest::mouseMove(window->windowHandle(), pointer_);
    });
    AwaitReceived();
  }
  void Click(GridCell cell) {
    MoveTo(cell);
    Act(QTest::MousePress);
    Act(QTest::MouseRelease);
  }

  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    const HWND handle = script.HandleOf(grid);
    LRESULT answer = 0;
    script.Do([&] { answer = ::SendMessageW(handle, message, wParam, lParam); });
    return answer;
  }
  bool IsBlocked(GridCell cell) {
    return Send(GCM_GETPROTECT, reinterpret_cast<WPARAM>(&cell)) == 1;
  }
  QString TextOf(GridCell cell) {
    std::array<wchar_t, kGridMaxText + 1> text{};
    Send(GCM_GETCELL, reinterpret_cast<WPARAM>(&cell), reinterpret_cast<LPARAM>(text.data()));
    return QString::fromWCharArray(text.data());
  }
  QStringList DayNames() {
    QStringList names;
    for (int row = 1; row <= 7; ++row)
      names << TextOf({row, 0});
    return names;
  }
  // Until the cell is painted in that colour, between its frame and its middle.
  void AwaitColour(GridCell cell, const QColor& colour) {
    const QPoint place = MiddleOf(cell) - QPoint(4, 4);
    script.Await([&] { return grid->grab().toImage().pixelColor(place) == colour; },
                 colour.name() + QString(" at %1, %2").arg(cell.row).arg(cell.col));
  }

  DesktopScript& script;
  QWidget* window;
  QWidget* grid;

 private:
  // Days are 60 pixels wide, hours 21 high, and the cells have edges of 19.
  static QPoint MiddleOf(GridCell cell) {
    return {cell.col == 0 ? 30 : 60 + (cell.col - 1) * 19 + 9,
            cell.row == 0 ? 10 : 21 + (cell.row - 1) * 19 + 9};
  }
  void AwaitReceived() {
    const auto isReceived = [] {
      MSG message;
      return !::PeekMessageW(&message, nullptr, WM_MOUSEMOVE, WM_RBUTTONUP, PM_NOREMOVE);
    };
    script.Await(isReceived, "end of the input");
  }

  QPoint pointer_;  // in the window
};

LONG WidthInHeading(const std::wstring& text) {
  LOGFONTW font{};
  font.lfHeight = -11;
  std::wcscpy(font.lfFaceName, L"Tahoma");
  const FontHandle heading(::CreateFontIndirectW(&font));
  const WindowDc screen(nullptr);
  const SelectedObject selected(screen.Get(), heading.Get());
  SIZE size{};
  ::GetTextExtentPoint32W(screen.Get(), text.c_str(), static_cast<int>(text.size()), &size);
  return size.cx;
}

class HoursDialogTest : public FrameTest {
 protected:
  // Whether the editor ended with OK; the table is as a caller then has it.
  bool Run(int last, const std::function<void(HoursUser&)>& act,
           const QString& title = "Connection hours") {
    HoursDialog dialog(ui_, settings_, nullptr, hours_);
    DesktopScript script(UserOf(title, last, [&](DesktopScript& running, QWidget* window) {
      HoursUser user(running, window);
      act(user);
    }));
    const bool accepted = dialog.Run();
    if (accepted) hours_ = dialog.Hours();
    return accepted;
  }
  // Of all hours of the week those that are blocked.
  std::vector<std::size_t> Blocked() const {
    std::vector<std::size_t> blocked;
    for (std::size_t i = 0; i < hours_.size(); ++i) {
      if (hours_[i]) blocked.push_back(i);
    }
    return blocked;
  }

  HoursTable hours_{};
};

TEST_F(HoursDialogTest, DaysStandInTheOrderOfTheWeekAndHoursHaveTwoDigitsWithoutTheEndOfTheDay) {
  const QStringList days = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                            "Thursday", "Friday", "Saturday"};
  for (const auto& [setting, first] :
       {std::pair(L"0", 0), {L"1", 1}, {L"4", 4}, {L"6", 6}, {L"7", 0}, {L"4294967295", 0}}) {
    settings_.SetSetting(SettingKey::kFirstDayOfWeek, setting);
    for (int hour = 0; hour < 24; ++hour)
      hours_[static_cast<std::size_t>(first * 24 + hour)] = hour % 5 == 0;
    Run(IDOK, [&, first = first](HoursUser& user) {
      EXPECT_EQ(user.DayNames(), days.mid(first) + days.mid(0, first));
      for (int hour = 0; hour < 24; ++hour)
        EXPECT_EQ(user.IsBlocked({1, hour + 1}), hour % 5 == 0) << first << ", " << hour;
      EXPECT_FALSE(user.IsBlocked({2, 1}));
      for (int hour = 0; hour <= 24; ++hour)
        EXPECT_EQ(user.TextOf({0, hour + 1}), QString("%1").arg(hour, 2, 10, QChar('0')));
      EXPECT_EQ(user.Send(GCM_GETCOLS), 24);
      EXPECT_EQ(user.Send(GCM_GETROWS), 7);
    });
    hours_.fill(false);
  }
}

TEST_F(HoursDialogTest, BlockedHoursAreRedAndAllowedOnesGreenSinceTheClick) {
  const QColor red(160, 0, 0);
  const QColor green(0, 160, 0);
  hours_[24] = true;
  Run(IDOK, [&](HoursUser& user) {
    user.AwaitColour({1, 1}, red);
    user.AwaitColour({1, 2}, green);
    user.AwaitColour({7, 24}, green);
    user.Click({1, 1});
    user.Click({7, 24});
    user.AwaitColour({1, 1}, green);
    user.AwaitColour({7, 24}, red);
  });
  EXPECT_THAT(Blocked(), ElementsAre(23));
}

TEST_F(HoursDialogTest, WithoutTextsTheDaysHaveNoNamesAndAllElseWorks) {
  constexpr DWORD kNoSuchLanguage = 1034;
  catalogue_.SetInterfaceLanguage(kNoSuchLanguage);
  EXPECT_TRUE(Run(
      IDOK,
      [](HoursUser& user) {
        EXPECT_EQ(user.DayNames().join(""), "");
        user.Click({1, 1});
      },
      ""));
  EXPECT_TRUE(hours_[24]);
}

TEST_F(HoursDialogTest, TextsAreThoseOfTheInterfaceLanguageAndFitTheirPlaces) {
  const struct {
    DWORD language;
    const char *title, *days, *explanation, *cancel;
  } cases[] = {
      {1033, "Connection hours", "Monday Tuesday Wednesday Thursday Friday Saturday Sunday",
       "Click the grid to specify when the user is allowed to connect.", "Cancel"},
      {1053, "Anslutningstider", "Måndag Tisdag Onsdag Torsdag Fredag Lördag Söndag",
       "Klicka i rutnätet för att ange när användaren får ansluta till Internet.", "Avbryt"},
  };
  for (const auto& each : cases) {
    const auto look = [&](HoursUser& user) {
      EXPECT_EQ(user.DayNames().join(' '), each.days);
      for (const auto& [id, text] : {std::pair{IDC_HOURS_EXPLANATION, each.explanation},
                                     {IDOK, "OK"},
                                     {IDCANCEL, each.cancel}}) {
        QWidget* part = user.script.Child(user.window, id);
        const QString shown = user.script.TextOf(part);
        EXPECT_EQ(shown, text);
        user.script.Do([&] {
          EXPECT_FALSE(part->geometry().intersects(user.grid->geometry())) << shown.toStdString();
          EXPECT_LE(part->fontMetrics().horizontalAdvance(shown), part->width());
        });
      }
      user.script.Do([&] {
        EXPECT_EQ(user.grid->geometry(), QRect(7, 7, 517, 155));
        EXPECT_TRUE(user.window->rect().contains(user.grid->geometry()));
      });
    };
    catalogue_.SetInterfaceLanguage(each.language);
    Run(IDOK, look, each.title);
    // Two pixels are free on either side of a heading.
    for (MessageId day = 0; day < 7; ++day)
      EXPECT_LE(WidthInHeading(catalogue_.GetMessageText(kMsgSunday + day)), 56) << day;
  }
  EXPECT_LE(WidthInHeading(L"20"), 15);
}

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
    if (each.firstDay != nullptr) settings_.SetSetting(SettingKey::kFirstDayOfWeek, each.firstDay);
    hours_.fill(false);
    EXPECT_TRUE(Run(IDOK, [&](HoursUser& user) {
      user.Click(each.cell);
      EXPECT_TRUE(user.IsBlocked(each.cell));
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
  EXPECT_TRUE(Run(IDOK, [&](HoursUser& user) {
    user.MoveTo({2, 3});
    user.Act(QTest::MousePress);
    for (const auto& each : moves) {
      user.MoveTo(each.cell, each.offset);
      EXPECT_EQ(user.IsBlocked(each.cell), each.isBlocked) << each.what;
    }
    user.Act(QTest::MouseRelease);
  }));
  EXPECT_THAT(Blocked(), ElementsAre(2 * 24 + 2, 3 * 24 + 2));
}

TEST_F(HoursDialogTest, MovesWithTheButtonUpAndPressesOnHeadingsAndDoubleClicksChangeNothing) {
  EXPECT_TRUE(Run(IDOK, [](HoursUser& user) {
    user.MoveTo({1, 1});
    user.MoveTo({1, 2});
    for (const GridCell heading : {GridCell{0, 5}, {5, 0}, {0, 0}})
      user.Click(heading);
    user.MoveTo({5, 5});
    user.MoveTo({3, 3});
    user.Act(QTest::MouseDClick);
  }));
  EXPECT_THAT(Blocked(), IsEmpty());
}

TEST_F(HoursDialogTest, CancelAndEscapeLeaveTheTableAsItWas) {
  for (const int last : {IDCANCEL, 0}) {
    EXPECT_FALSE(Run(last, [&](HoursUser& user) {
      user.Click({2, 2});
      EXPECT_TRUE(user.IsBlocked({2, 2}));
      if (last == 0) user.script.Key(Qt::Key_Escape);
    }));
    EXPECT_THAT(Blocked(), IsEmpty());
  }
}

TEST_F(HoursDialogTest, EnterIsOkAndTabPassesTheGridBy) {
  EXPECT_TRUE(Run(0, [](HoursUser& user) {
    for (const int id : {IDOK, IDCANCEL, IDOK}) {
      const QWidget* button = user.script.Child(user.window, id);
      user.script.Await([&] { return button->hasFocus(); }, QString("focus on %1").arg(id));
      user.script.Key(Qt::Key_Tab);
    }
    user.script.Key(Qt::Key_Tab);
    user.script.Key(Qt::Key_Return);
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
  const auto look = [](DesktopScript& steps, QWidget* window) {
    const HWND dialogWindow = steps.HandleOf(window);
    steps.Do([&] { EXPECT_EQ(::GetDlgItem(dialogWindow, kHoursGridId), nullptr); });
    EXPECT_FALSE(steps.TextOf(window, IDC_HOURS_EXPLANATION).isEmpty());
  };
  DesktopScript script(UserOf("Connection hours", IDOK, look));
  EXPECT_TRUE(dialog.Run());
  EXPECT_EQ(dialog.Hours(), hours_);
  EXPECT_TRUE(::UnregisterClassW(kGridClassName, instance));
}

}  // namespace
}  // namespace quillgate
