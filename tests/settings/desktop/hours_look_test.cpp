// The editor of connection hours on the screen: what it shows.
#include <QLabel>

#include "handles/gdi_handles.h"
#include "hours_test.h"

namespace quillgate {
namespace {

class HoursLookTest : public HoursTest {};

TEST_F(HoursLookTest, DaysStandInTheOrderOfTheWeek) {
  const QStringList days = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                            "Thursday", "Friday", "Saturday"};
  for (const auto& [setting, first] :
       {std::pair(L"0", 0), {L"1", 1}, {L"4", 4}, {L"6", 6}, {L"7", 0}, {L"4294967295", 0}}) {
    BeginWeekWith(setting);
    for (int hour = 0; hour < 24; ++hour)
      hours_[static_cast<std::size_t>(first * 24 + hour)] = hour % 5 == 0;
    Run([&, first = first](HoursUser& user) {
      EXPECT_EQ(user.DayNames(), days.mid(first) + days.mid(0, first));
      for (int hour = 0; hour < 24; ++hour)
        EXPECT_EQ(user.IsBlocked({1, hour + 1}), hour % 5 == 0) << first << ", " << hour;
      EXPECT_FALSE(user.IsBlocked({2, 1}));
      user.End(IDOK);
    });
    hours_.fill(false);
  }
}

TEST_F(HoursLookTest, HoursHaveTwoDigitsAndTheEndOfTheDayIsNotShown) {
  Run([](HoursUser& user) {
    for (int hour = 0; hour <= 24; ++hour)
      EXPECT_EQ(user.TextOf({0, hour + 1}), QString("%1").arg(hour, 2, 10, QChar('0')));
    EXPECT_EQ(user.Send(GCM_GETCOLS), 24);
    EXPECT_EQ(user.Send(GCM_GETROWS), 7);
    user.End(IDOK);
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
    user.End(IDOK);
  });
  EXPECT_THAT(Blocked(), testing::ElementsAre(23));
}

TEST_F(HoursLookTest, TextsAreThoseOfTheInterfaceLanguage) {
  Run([](HoursUser& user) {
    const auto text = [&](int id) { return user.Script().TextOf(user.Child(id)); };
    EXPECT_EQ(text(IDC_HOURS_EXPLANATION),
              "Click the grid to specify when the user is allowed to connect.");
    EXPECT_EQ(text(IDOK), "OK");
    EXPECT_EQ(text(IDCANCEL), "Cancel");
    user.End(IDOK);
  });
  catalogue_.SetInterfaceLanguage(1053);
  Run(
      [](HoursUser& user) {
        EXPECT_EQ(user.DayNames(), QStringList({"Måndag", "Tisdag", "Onsdag", "Torsdag", "Fredag",
                                                "Lördag", "Söndag"}));
        EXPECT_EQ(user.Script().TextOf(user.Child(IDCANCEL)), "Avbryt");
        user.End(IDOK);
      },
      "Anslutningstider");
}

TEST_F(HoursLookTest, WithoutTextsTheDaysHaveNoNamesAndAllElseWorks) {
  constexpr DWORD kNoSuchLanguage = 1034;
  catalogue_.SetInterfaceLanguage(kNoSuchLanguage);
  EXPECT_TRUE(Run(
      [](HoursUser& user) {
        EXPECT_EQ(user.DayNames().join(""), "");
        user.Click({1, 1});
        user.End(IDOK);
      },
      ""));
  EXPECT_TRUE(hours_[24]);
}

TEST_F(HoursLookTest, GridTextAndButtonsFitTheDialogAndLieApart) {
  for (const auto& [language, title] :
       {std::pair(1033u, "Connection hours"), {1053u, "Anslutningstider"}}) {
    catalogue_.SetInterfaceLanguage(language);
    Run(
        [](HoursUser& user) {
          const auto* text = qobject_cast<const QLabel*>(user.Child(IDC_HOURS_EXPLANATION));
          ASSERT_NE(text, nullptr);
          const QList<const QWidget*> parts = {user.Grid(), text, user.Child(IDOK),
                                               user.Child(IDCANCEL)};
          user.Script().Do([&] {
            EXPECT_EQ(user.Grid()->geometry(), QRect(7, 7, 517, 155));
            EXPECT_LE(text->fontMetrics().horizontalAdvance(text->text()), text->width());
            for (const QWidget* each : parts) {
              EXPECT_TRUE(user.Window()->rect().contains(each->geometry())) << parts.indexOf(each);
              for (const QWidget* other : parts) {
                EXPECT_TRUE(each == other || !each->geometry().intersects(other->geometry()))
                    << parts.indexOf(each) << " on " << parts.indexOf(other);
              }
            }
          });
          user.End(IDOK);
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
