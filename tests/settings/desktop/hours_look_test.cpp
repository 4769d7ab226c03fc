// The editor of connection hours on the screen: what it shows.
#include <QLabel>

#include "grid/grid_messages.h"
#include "handles/gdi_handles.h"
#include "hours_test.h"

namespace quillgate {
namespace {

class HoursLookTest : public HoursTest {};

const QStringList kEnglishDays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};

QStringList DayNames(HoursUser& user) {
  QStringList names;
  for (int row = 1; row <= 7; ++row)
    names << user.TextOf({row, 0});
  return names;
}

// From that day round to the one before.
QStringList WeekFrom(const QStringList& days, int first) {
  return days.mid(first) + days.mid(0, first);
}

TEST_F(HoursLookTest, DaysStandInTheOrderOfTheWeek) {
  struct Case {
    const wchar_t* setting;
    int first;
  };
  for (const Case& each : {Case{L"0", 0}, Case{L"1", 1}, Case{L"4", 4}, Case{L"6", 6},
                           Case{L"7", 0}, Case{L"", 0}, Case{L"4294967295", 0}}) {
    BeginWeekWith(each.setting);
    for (int hour = 0; hour < 24; ++hour)
      hours_[static_cast<std::size_t>(each.first * 24 + hour)] = hour % 5 == 0;
    Run([&](HoursUser& user) {
      EXPECT_EQ(DayNames(user), WeekFrom(kEnglishDays, each.first));
      for (int hour = 0; hour < 24; ++hour)
        EXPECT_EQ(user.IsBlocked({1, hour + 1}), hour % 5 == 0) << each.first << ", " << hour;
      EXPECT_FALSE(user.IsBlocked({2, 1}));
      user.Script().Click(user.Window(), IDOK);
    });
    hours_.fill(false);
  }
}

TEST_F(HoursLookTest, HoursHaveTwoDigitsAndTheEndOfTheDayIsNotShown) {
  Run([](HoursUser& user) {
    for (int hour = 0; hour <= 24; ++hour)
      EXPECT_EQ(user.TextOf({0, hour + 1}), QString("%1").arg(hour, 2, 10, QChar('0')));
    const HWND grid = user.Script().HandleOf(user.Grid());
    user.Script().Do([&] {
      EXPECT_EQ(::SendMessageW(grid, GCM_GETCOLS, 0, 0), 24);
      EXPECT_EQ(::SendMessageW(grid, GCM_GETROWS, 0, 0), 7);
    });
    user.Script().Click(user.Window(), IDOK);
  });
}

TEST_F(HoursLookTest, BlockedHoursAreRedAndAllowedOnesGreenSinceTheClick) {
  const QColor red(160, 0, 0);
  const QColor green(0, 160, 0);
  hours_[24] = true;
  Run([&](HoursUser& user) {
    user.AwaitColour({1, 1}, red);
    user.AwaitColour({1, 2}, green);
    user.AwaitColour({7, 24}, green);
    user.Click({1, 1});
    user.Click({7, 24});
    user.AwaitColour({1, 1}, green);
    user.AwaitColour({7, 24}, red);
    user.Script().Click(user.Window(), IDOK);
  });
}

TEST_F(HoursLookTest, TextsAreThoseOfTheInterfaceLanguage) {
  Run([](HoursUser& user) {
    const auto text = [&](int id) {
      return user.Script().TextOf(user.Script().Child(user.Window(), id));
    };
    EXPECT_EQ(text(IDC_HOURS_EXPLANATION),
              "Click the grid to specify when the user is allowed to connect.");
    EXPECT_EQ(text(IDOK), "OK");
    EXPECT_EQ(text(IDCANCEL), "Cancel");
    user.Script().Click(user.Window(), IDOK);
  });
  catalogue_.SetInterfaceLanguage(1053);
  Run(
      [](HoursUser& user) {
        EXPECT_EQ(DayNames(user), QStringList({"Måndag", "Tisdag", "Onsdag", "Torsdag", "Fredag",
                                               "Lördag", "Söndag"}));
        EXPECT_EQ(user.Script().TextOf(user.Script().Child(user.Window(), IDCANCEL)), "Avbryt");
        user.Script().Click(user.Window(), IDOK);
      },
      "Anslutningstider");
}

TEST_F(HoursLookTest, WithoutTextsTheDaysHaveNoNamesAndAllElseWorks) {
  constexpr DWORD kNoSuchLanguage = 1034;
  catalogue_.SetInterfaceLanguage(kNoSuchLanguage);
  EXPECT_TRUE(Run(
      [](HoursUser& user) {
        EXPECT_EQ(DayNames(user).join(""), "");
        user.Click({1, 1});
        user.Script().Click(user.Window(), IDOK);
      },
      ""));
  EXPECT_TRUE(hours_[24]);
}

TEST_F(HoursLookTest, GridTextAndButtonsFitTheDialogAndLieApart) {
  for (const auto& [language, title] : {std::pair{1033u, QString("Connection hours")},
                                        std::pair{1053u, QString("Anslutningstider")}}) {
    catalogue_.SetInterfaceLanguage(language);
    Run(
        [](HoursUser& user) {
          DesktopScript& script = user.Script();
          QWidget* window = user.Window();
          const QList<QWidget*> parts = {user.Grid(), script.Child(window, IDC_HOURS_EXPLANATION),
                                         script.Child(window, IDOK),
                                         script.Child(window, IDCANCEL)};
          script.Do([&] {
            EXPECT_EQ(user.Grid()->geometry(), QRect(7, 7, 517, 155));
            for (QWidget* each : parts) {
              EXPECT_TRUE(window->rect().contains(each->geometry()))
                  << each->objectName().toStdString();
              for (QWidget* other : parts) {
                EXPECT_TRUE(each == other || !each->geometry().intersects(other->geometry()))
                    << each->objectName().toStdString() << " on "
                    << other->objectName().toStdString();
              }
            }
            const auto* text = qobject_cast<const QLabel*>(parts[1]);
            ASSERT_NE(text, nullptr);
            EXPECT_LE(text->fontMetrics().horizontalAdvance(text->text()), text->width());
          });
          script.Click(window, IDOK);
        },
        title);
  }
}

// Two pixels are free on either side of a cell's text.
TEST_F(HoursLookTest, EveryDayAndHourFitsItsHeading) {
  LOGFONTW font{};
  font.lfHeight = -11;
  std::wcscpy(font.lfFaceName, L"Tahoma");
  const FontHandle heading(::CreateFontIndirectW(&font));
  const HDC context = ::GetDC(nullptr);
  {
    const SelectedObject selected(context, heading.Get());
    const auto width = [context](const std::wstring& text) {
      SIZE size{};
      ::GetTextExtentPoint32W(context, text.c_str(), static_cast<int>(text.size()), &size);
      return size.cx;
    };
    for (const DWORD language : {1033u, 1053u}) {
      catalogue_.SetInterfaceLanguage(language);
      for (MessageId day = 0; day < 7; ++day)
        EXPECT_LE(width(catalogue_.GetMessageText(kMsgSunday + day)), 56) << day;
    }
    EXPECT_LE(width(L"20"), 15);
  }
  ::ReleaseDC(nullptr, context);
}

}  // namespace
}  // namespace quillgate
