// Date pickers: what is set, what the user picks and the range it stays in.
#include <QCalendarWidget>
#include <QDateEdit>

#include "platform/controls/control_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SYSTEMTIME Date(WORD year, WORD month, WORD day, WORD hour = 0) {
  return {year, month, 0, day, hour, 0, 0, 0};
}

class DatePickerTest : public ControlTest {
 protected:
  DatePickerTest() { Set(Date(2024, 5, 15)); }

  LRESULT Set(const SYSTEMTIME& time) { return Send(picker_, DTM_SETSYSTEMTIME, GDT_VALID, &time); }
  SYSTEMTIME Get() {
    SYSTEMTIME time{};
    EXPECT_EQ(Send(picker_, DTM_GETSYSTEMTIME, 0, &time), GDT_VALID);
    EXPECT_EQ(Edit()->date(), QDate(time.wYear, time.wMonth, time.wDay)) << "not what is shown";
    return time;
  }
  QDate Shown() {
    Get();
    return Edit()->date();
  }
  QDateEdit* Edit() const { return WidgetOf<QDateEdit>(picker_); }
  void PressUpOnDay() {
    Edit()->setSelectedSection(QDateTimeEdit::DaySection);
    Press(picker_, Qt::Key_Up);
  }

  HWND picker_ = Make(DATETIMEPICK_CLASS, DTS_RIGHTALIGN, L"", 120);
};

TEST_F(DatePickerTest, ADateThatExistsIsSetWithItsTimeAndTellsNobody) {
  EXPECT_TRUE(Set(Date(2024, 2, 29, 13)));
  const SYSTEMTIME got = Get();
  EXPECT_EQ(got.wDay, 29);
  EXPECT_EQ(got.wHour, 13);
  EXPECT_EQ(got.wDayOfWeek, 4) << "a Thursday";
  EXPECT_TRUE(Edit()->displayFormat().contains("yyyy")) << Edit()->displayFormat().toStdString();
  for (const SYSTEMTIME& time : {Date(2023, 2, 29), Date(1600, 12, 31), Date(2024, 13, 1)})
    EXPECT_FALSE(Set(time)) << time.wYear;
  const SYSTEMTIME time = Date(2024, 6, 1);
  EXPECT_FALSE(Send(picker_, DTM_SETSYSTEMTIME, GDT_NONE, &time));
  EXPECT_EQ(Shown(), QDate(2024, 2, 29));
  EXPECT_THAT(Notified(), IsEmpty());
}

TEST_F(DatePickerTest, ADateThatTheUserPicksIsNotifiedLater) {
  SYSTEMTIME heard{};
  onNotify = [&](const NMHDR& header) {
    heard = reinterpret_cast<const NMDATETIMECHANGE&>(header).st;
  };
  PressUpOnDay();
  EXPECT_THAT(NotifiedAtOnce(), IsEmpty()) << "told inside the desktop's event";
  EXPECT_THAT(Notified(), ElementsAre("notify 1 -759"));
  EXPECT_EQ(heard.wDay, 16);
  EXPECT_EQ(Shown(), QDate(2024, 5, 16));
}

TEST_F(DatePickerTest, TheRangeBoundsWhatIsSetAndPicked) {
  const SYSTEMTIME range[] = {Date(2024, 5, 1), Date(2024, 5, 14)};
  EXPECT_TRUE(Send(picker_, DTM_SETRANGE, GDTR_MIN | GDTR_MAX, range));
  EXPECT_EQ(Shown(), QDate(2024, 5, 14));
  EXPECT_FALSE(Set(Date(2024, 5, 15)));
  PressUpOnDay();
  EXPECT_EQ(Shown(), QDate(2024, 5, 14));
  SYSTEMTIME got[2];
  EXPECT_EQ(Send(picker_, DTM_GETRANGE, 0, got), LRESULT{GDTR_MIN | GDTR_MAX});
  EXPECT_EQ(got[0].wDay, 1);

  const SYSTEMTIME later[] = {Date(2024, 6, 1), SYSTEMTIME{}};
  EXPECT_TRUE(Send(picker_, DTM_SETRANGE, GDTR_MIN, later));
  EXPECT_EQ(Shown(), QDate(2024, 6, 1));
  EXPECT_EQ(Send(picker_, DTM_GETRANGE, 0, got), LRESULT{GDTR_MIN});
}

TEST_F(DatePickerTest, APartThatIsTypedCountsOnceItIsCompleteOrLeft) {
  const SYSTEMTIME range[] = {SYSTEMTIME{}, Date(2024, 5, 15)};
  Send(picker_, DTM_SETRANGE, GDTR_MAX, range);
  const struct {
    QDateTimeEdit::Section typedIn;
    const char* typed;
    bool isComplete;
    QDate date;
  } cases[] = {
      {QDateTimeEdit::YearSection, "1999", true, {1999, 5, 15}},
      {QDateTimeEdit::YearSection, "200", false, {1999, 5, 15}},
      {QDateTimeEdit::DaySection, "2", false, {1999, 5, 2}},
      {QDateTimeEdit::DaySection, "31", true, {1999, 5, 31}},
      {QDateTimeEdit::YearSection, "2030", true, {2024, 5, 15}},
  };
  for (const auto& each : cases) {
    const QDate before = Shown();
    Edit()->setSelectedSection(each.typedIn);
    QTest::keyClicks(Edit(), each.typed);
    EXPECT_EQ(Shown(), each.isComplete ? each.date : before) << each.typed;
    Edit()->setSelectedSection(QDateTimeEdit::MonthSection);
    EXPECT_EQ(Shown(), each.date) << each.typed;
    EXPECT_EQ(Notified().size(), before != each.date ? 1u : 0u) << each.typed;
  }
}

TEST_F(DatePickerTest, TheCalendarCanBeGivenWeekNumbersBeforeItDrops) {
  QCalendarWidget* calendar = Edit()->calendarWidget();
  onNotify = [&](const NMHDR& header) {
    constexpr LPARAM kStyle = MCS_WEEKNUMBERS | MCS_NOTODAY | MCS_NOTODAYCIRCLE;
    if (header.code != DTN_DROPDOWN) return;
    EXPECT_FALSE(calendar->isVisible());
    Send(picker_, DTM_SETMCSTYLE, 0, kStyle);
  };
  const QPoint arrow(Edit()->width() - 6, Edit()->height() / 2);
  const std::function<void()> ways[] = {
      [&] { QTest::mouseClick(Edit(), Qt::LeftButton, {}, arrow); },
      [&] { Press(picker_, Qt::Key_F4); },
      [&] { Press(picker_, Qt::Key_Down, Qt::AltModifier); },
  };
  for (const auto& drop : ways) {
    drop();
    EXPECT_THAT(Notified(), ElementsAre("notify 1 -754"));
    ASSERT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->verticalHeaderFormat(), QCalendarWidget::ISOWeekNumbers);
    calendar->window()->hide();
    EXPECT_THAT(Notified(), ElementsAre("notify 1 -753"));
  }
}

}  // namespace
