// The statistics sheet on the screen: what it lists, by clicks and keys, and a database that fails.
#include "stats/statistics_sheet.h"

#include <QClipboard>
#include <QDateEdit>
#include <QGuiApplication>
#include <QHeaderView>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include "frame/desktop/frame_test.h"
#include "frame/desktop/sheet_user.h"
#include "program/program_test.h"

namespace quillgate {
namespace {

const QStringList kWholeWeek = {"3/14/2005 10:00 AM|Ann|01:00:00|9|7",
                                "3/15/2005 10:00 AM|Bo|00:00:05|3,145,725|7",
                                "3/20/2005 11:59 PM|Ann|00:00:01|10|7"};

class StatisticsUser : public SheetUser {
 public:
  using SheetUser::SheetUser;

  QTreeView* Sessions() { return Get<QTreeView>(IDC_SESSIONS); }
  void FocusSessions() {
    QTreeView* sessions = Sessions();
    script.Do([&] { sessions->setFocus(); });
  }
  QStringList Rows() {
    QStringList rows;
    const QAbstractItemModel& model = *Sessions()->model();
    script.Do([&] {
      for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
          cells << model.index(row, column).data().toString();
        rows << cells.join('|');
      }
    });
    return rows;
  }
  // Returns the rows once there are so many of them.
  QStringList AwaitRows(int count) {
    const QAbstractItemModel* model = Sessions()->model();
    script.Await([&] { return model->rowCount() == count; }, "list of that length");
    return Rows();
  }
  void ClickHeading(int column) {
    QHeaderView* header = Sessions()->header();
    script.Do([&] {
      const QPoint place(header->sectionViewportPosition(column) + 20, header->height() / 2);
      QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    });
  }
  void ToggleUser(int row) {
    auto* users = Get<QTreeView>(IDC_USER_FILTER);
    script.Do([&] {
      const QRect place = users->visualRect(users->model()->index(row, 0));
      QTest::mouseClick(users->viewport(), Qt::LeftButton, {},
                        QPoint(place.left() + 8, place.center().y()));
    });
  }
  void StepBack() {
    const auto arrows = Get(IDC_INTERVAL_STEP)->findChildren<QToolButton*>();
    for (QToolButton* each : arrows)
      if (each->arrowType() == Qt::LeftArrow) script.Click(each);
  }
  QString Date(int picker) { return Get<QDateEdit>(picker)->date().toString(Qt::ISODate); }
};

class StatisticsSheetTest : public WithUsers<FrameTest> {
 protected:
  StatisticsSheetTest() {
    machine_.Time().SetLocalTime(2005, 3, 16, 12, 0, 0);
    AddSession(L"Ann", L"1", L"10", L"2005-03-20 23:59:59");
    AddSession(L"Bo", L"5", L"3145725", L"2005-03-15 10:00:00");
    AddSession(L"Ann", L"3600", L"9", L"2005-03-14 10:00:00");
    AddSession(L"Ann", L"1", L"1", L"2005-03-21 00:00:00");
    AddSession(L"Bo", L"1", L"1", L"2005-02-28 23:59:59");
    AddSession(L"gone", L"7200", L"1", L"2005-03-15 10:00:00");
  }

  void AddSession(const std::wstring& user, const std::wstring& seconds,
                  const std::wstring& received, const std::wstring& start) {
    Insert(L"ConnLog", {user, seconds, L"7", received, start});
  }
  void Open(const std::function<void(StatisticsUser&)>& act) {
    DesktopScript script(
        UserOf("Statistics", IDCANCEL, [&](DesktopScript& running, QWidget* sheet) {
          StatisticsUser user(running, sheet);
          act(user);
        }));
    StatisticsSheet({ui_, database_, calendar_}).Open({L"Ann", L"Bo"});
  }

  WeekCalendar calendar_;
};

TEST_F(StatisticsSheetTest, TheCurrentWeekOfEveryUserIsListedAndTotalled) {
  Open([&](StatisticsUser& user) {
    EXPECT_EQ(user.Rows(), kWholeWeek);
    EXPECT_EQ(
        user.Text(IDC_TOTALS),
        "Total time online: 01:00:06 (hh:mm:ss), total downloads: 3 (MB), total uploads: 0 (MB)");
    EXPECT_TRUE(user.Get<QRadioButton>(IDC_INTERVAL_WEEK)->isChecked());
    EXPECT_FALSE(user.IsEnabled(IDC_INTERVAL_FROM) || user.IsEnabled(IDC_INTERVAL_TO));
    EXPECT_EQ(user.Date(IDC_INTERVAL_FROM) + user.Date(IDC_INTERVAL_TO), "2005-03-142005-03-20");
    EXPECT_EQ(user.script.TextOf(user.sheet, IDCANCEL), "Close");
    // A filter that changes reads the log again.
    AddSession(L"Ann", L"1", L"1", L"2005-03-16 11:00:00");
    user.ToggleUser(1);
    EXPECT_EQ(user.AwaitRows(3).filter("|Bo|"), QStringList());
    user.ToggleUser(0);
    user.AwaitRows(0);
    EXPECT_EQ(
        user.Text(IDC_TOTALS),
        "Total time online: 00:00:00 (hh:mm:ss), total downloads: 0 (MB), total uploads: 0 (MB)");
  });
}

TEST_F(StatisticsSheetTest, IntervalsAreSteppedByMouseAndKeysAndPickedWithinTheirBounds) {
  Open([&](StatisticsUser& user) {
    user.Click(IDC_INTERVAL_MONTH);
    user.AwaitRows(4);
    user.StepBack();
    EXPECT_EQ(user.AwaitRows(1), QStringList("2/28/2005 11:59 PM|Bo|00:00:01|1|7"));
    EXPECT_EQ(user.Date(IDC_INTERVAL_TO), "2005-02-28");
    user.FocusSessions();
    user.script.Key(Qt::Key_Right);
    user.AwaitRows(4);
    user.Click(IDC_INTERVAL_CUSTOM);
    auto* from = user.Get<QDateEdit>(IDC_INTERVAL_FROM);
    auto* to = user.Get<QDateEdit>(IDC_INTERVAL_TO);
    user.script.Await([&] { return from->isEnabled(); }, "picker to be enabled");
    user.script.Do([&] { from->setDate(QDate(2005, 3, 20)); });
    user.AwaitRows(2);
    EXPECT_EQ(to->minimumDate(), QDate(2005, 3, 20));
    EXPECT_EQ(from->maximumDate(), QDate(2005, 3, 31));
    user.Click(IDC_INTERVAL_WEEK);
    EXPECT_EQ(user.AwaitRows(3), kWholeWeek);
  });
}

TEST_F(StatisticsSheetTest, AHeadingSortsAndSelectedRowsAreCopiedAsTheyAreShown) {
  Open([&](StatisticsUser& user) {
    const auto awaitOrder = [&](const QStringList& rows) {
      const QAbstractItemModel* model = user.Sessions()->model();
      const QString first = rows.first().section('|', 0, 0);
      user.script.Await([&] { return model->index(0, 0).data().toString() == first; }, "order");
      EXPECT_EQ(user.Rows(), rows);
    };
    user.ClickHeading(3);
    awaitOrder({kWholeWeek[0], kWholeWeek[2], kWholeWeek[1]});
    user.ClickHeading(3);
    awaitOrder({kWholeWeek[1], kWholeWeek[2], kWholeWeek[0]});
    user.FocusSessions();
    user.script.Key(Qt::Key_A, Qt::ControlModifier);
    user.script.Key(Qt::Key_C, Qt::ControlModifier);
    const auto copied = [] { return QGuiApplication::clipboard()->text().remove('\r'); };
    const QString expected =
        QStringList{kWholeWeek[1], kWholeWeek[2], kWholeWeek[0], ""}.join('\n').replace('|', '\t');
    user.script.Await([&] { return copied() == expected; }, "text in the clipboard");
  });
}

TEST_F(StatisticsSheetTest, TheTopListsCoverTheWholeLogAndEveryUserInIt) {
  Open([&](StatisticsUser& user) {
    user.Turn(1);
    EXPECT_EQ(user.Text(IDC_TOP_TIME_NAMES), "1. gone\n2. Ann\n3. Bo\n");
    EXPECT_EQ(user.Text(IDC_TOP_TIME_VALUES), "02:00:00\n01:00:02\n00:00:06\n");
    EXPECT_EQ(user.Text(IDC_TOP_DOWNLOADS_VALUES), "3,145,726\n20\n1\n");
  });
}

TEST_F(StatisticsSheetTest, AFailingDatabaseIsReportedForEachStatementAndNothingWrongIsShown) {
  const QString failure = "A database error was detected:\n\nno such table: ConnLog";
  Open([&](StatisticsUser& user) {
    user.script.Do([&] { database_.DbExecute(L"ALTER TABLE ConnLog RENAME TO Gone;"); });
    user.Click(IDC_INTERVAL_MONTH);
    EXPECT_EQ(CloseBox(user.script), failure);
    EXPECT_EQ(user.Rows() << user.Text(IDC_TOTALS), QStringList(""));
    user.Turn(1);
    for (int list = 0; list < 3; ++list)
      EXPECT_EQ(CloseBox(user.script), failure);
    EXPECT_EQ(user.Text(IDC_TOP_UPLOADS_NAMES), "1.\n2.\n3.\n4.\n5.");
    user.script.Do([&] { database_.DbExecute(L"ALTER TABLE Gone RENAME TO ConnLog;"); });
    user.Turn(1);
    user.Click(IDC_INTERVAL_WEEK);
    EXPECT_EQ(user.AwaitRows(1), QStringList("2/28/2005 11:59 PM|Bo|00:00:01|1|7"));
  });
}

}  // namespace
}  // namespace quillgate
