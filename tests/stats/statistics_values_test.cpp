// The values of the statistics: intervals, the statement, texts and order of sessions, rankings.
#include <cstdio>

#include "program/program_test.h"
#include "stats/session_list.h"
#include "stats/session_query.h"
#include "stats/top_list.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr LANGID kSwedish = 0x41D;

std::chrono::sys_days Day(const char* text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  EXPECT_EQ(std::sscanf(text, "%d-%u-%u", &year, &month, &day), 3) << text;
  return std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
}

DateInterval Interval(const char* first, const char* last) {
  return {Day(first), Day(last)};
}

TEST(DateIntervalTest, AWeekBeginsOnItsFirstDayAlsoAcrossYearsAndLeapDays) {
  const struct {
    const char* day;
    int firstDay;
    const char *first, *last;
  } cases[] = {
      {"2004-08-25", 1, "2004-08-23", "2004-08-29"}, {"2004-08-23", 1, "2004-08-23", "2004-08-29"},
      {"2004-08-29", 1, "2004-08-23", "2004-08-29"}, {"2004-08-29", 0, "2004-08-29", "2004-09-04"},
      {"2004-08-25", 7, "2004-08-22", "2004-08-28"}, {"2004-08-25", 3, "2004-08-25", "2004-08-31"},
      {"2004-08-25", 4, "2004-08-19", "2004-08-25"}, {"2004-08-25", 6, "2004-08-21", "2004-08-27"},
      {"2005-01-01", 1, "2004-12-27", "2005-01-02"}, {"2004-02-29", 2, "2004-02-24", "2004-03-01"},
      {"2005-03-27", 1, "2005-03-21", "2005-03-27"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(WeekOf(Day(each.day), each.firstDay), Interval(each.first, each.last)) << each.day;
}

TEST(DateIntervalTest, AStepMovesByAWeekAWholeMonthOrTheIntervalsOwnLength) {
  const struct {
    IntervalKind kind;
    DateInterval earlier, later;
  } cases[] = {
      {IntervalKind::kWeek, Interval("2004-12-27", "2005-01-02"),
       Interval("2005-01-03", "2005-01-09")},
      {IntervalKind::kMonth, Interval("2005-02-01", "2005-02-28"),
       Interval("2005-03-01", "2005-03-31")},
      {IntervalKind::kMonth, Interval("2004-02-01", "2004-02-29"),
       Interval("2004-03-01", "2004-03-31")},
      {IntervalKind::kMonth, Interval("2005-01-01", "2005-01-31"),
       Interval("2005-02-01", "2005-02-28")},
      {IntervalKind::kMonth, Interval("2004-12-01", "2004-12-31"),
       Interval("2005-01-01", "2005-01-31")},
      {IntervalKind::kCustom, Interval("2005-02-27", "2005-02-28"),
       Interval("2005-03-01", "2005-03-02")},
  };
  for (const auto& [kind, earlier, later] : cases) {
    EXPECT_EQ(Step(earlier, kind, true), later);
    EXPECT_EQ(Step(later, kind, false), earlier);
  }
  const DateInterval last = MonthOf(Day("9999-12-31"));
  EXPECT_EQ(Step(last, IntervalKind::kMonth, true), last);
  const DateInterval first = MonthOf(Day("1601-01-01"));
  EXPECT_EQ(Step(first, IntervalKind::kMonth, false), first);
}

TEST(SessionStatementTest, NamesAreListedInOrderAndTheirApostrophesAreDoubled) {
  const std::wstring head =
      L"SELECT StartDate, User, Seconds, BytesRecv, BytesSent FROM ConnLog WHERE StartDate >= "
      L"'2004-03-01 00:00:00' AND StartDate <= '2004-03-31 23:59:59' AND User IN (";
  const DateInterval march = Interval("2004-03-01", "2004-03-31");
  EXPECT_EQ(SessionStatement(march, {{}, false}), head + L");");
  EXPECT_EQ(SessionStatement(march, {{L"Bo", L"'O''Hara'", L"Ann"}, false}),
            head + L"'Bo', '''O''''Hara''', 'Ann');");
}

class StatisticsTest : public ProgramTest {
 protected:
  void AddSession(const std::wstring& start, const std::wstring& user,
                  const std::wstring& seconds = L"1", const std::wstring& received = L"0") {
    Insert(L"ConnLog", {user, seconds, L"0", received, start});
  }
  static std::vector<std::wstring> Texts(const SessionList& list, SessionColumn column) {
    std::vector<std::wstring> texts;
    for (std::size_t row = 0; row < list.Count(); ++row)
      texts.push_back(list.Text(row, column));
    return texts;
  }
  std::vector<std::wstring> Starts(const UserFilter& filter) {
    std::vector<std::wstring> starts;
    for (const DbRow& row : ReadSessions(database_, Interval("2004-03-01", "2004-03-31"), filter))
      starts.push_back(row[0]);
    return starts;
  }
};

TEST_F(StatisticsTest, BothDaysOfAnIntervalCountFromMidnightToMidnight) {
  AddSession(L"2004-02-29 23:59:59", L"Ann");
  AddSession(L"2004-03-01 00:00:00", L"Ann");
  AddSession(L"2004-03-31 23:59:59", L"Ann");
  AddSession(L"2004-04-01 00:00:00", L"Ann");
  AddSession(L"2004-03-15 12:00:00", L"Bo");
  EXPECT_THAT(Starts({{L"Ann"}, false}),
              ElementsAre(L"2004-03-01 00:00:00", L"2004-03-31 23:59:59"));
  EXPECT_THAT(Starts({{}, false}), ElementsAre());
}

TEST_F(StatisticsTest, EveryNameIsReadPastTheStatementsLimitButSomeAreRefused) {
  AddSession(L"2004-03-01 10:00:00", L"user42");
  AddSession(L"2004-03-02 10:00:00", L"gone");
  UserFilter filter{{}, true};
  for (int i = 0; i < 200; ++i)
    filter.names.push_back(L"user" + std::to_wstring(i));
  EXPECT_THAT(Starts(filter), ElementsAre(L"2004-03-01 10:00:00"));
  filter.isEveryone = false;
  try {
    Starts(filter);
    ADD_FAILURE() << "no error";
  } catch (const DBerror& error) {
    EXPECT_EQ(error.Message(), L"Query too long.");
  }
}

TEST_F(StatisticsTest, StoredTextsThatAreNoDateOrNumberAreShownAndCountAsNothing) {
  const std::wstring most = L"18446744073709551615";
  const SessionList list({
      {L"2004-03-01 18:05:09", L"Ann", L"3725", L"1048576", L"1048575"},
      {L"2004-02-30 10:00:00", L"Bo", L"12x", L"-5", L""},
      {L"2004-03-01 24:00:00", L"", most + L"0", L"1.5"},
      {L"2004-03-1", L"Ann"},
      {},
  });
  EXPECT_THAT(Texts(list, SessionColumn::kDate),
              ElementsAre(L"3/1/2004 6:05 PM", L"2004-02-30 10:00:00", L"2004-03-01 24:00:00",
                          L"2004-03-1", L""));
  EXPECT_THAT(Texts(list, SessionColumn::kTime),
              ElementsAre(L"01:02:05", L"12x", most + L"0", L"", L""));
  EXPECT_THAT(Texts(list, SessionColumn::kDownloads),
              ElementsAre(L"1,048,576", L"-5", L"1.5", L"", L""));
  EXPECT_EQ(list.Totals().seconds, 3725u);
  EXPECT_EQ(list.Totals().bytesReceived, 1048576u);
  EXPECT_EQ(list.Totals().bytesSent, 1048575u);
  EXPECT_EQ(SessionList({{L"", L"", most}, {L"", L"", L"2"}}).Totals().seconds,
            std::numeric_limits<std::uint64_t>::max());
  machine_.SetLocale(kSwedish, 0);
  EXPECT_EQ(list.Text(0, SessionColumn::kDate), L"2004-03-01 18:05");
}

TEST_F(StatisticsTest, BytesAreSortedAsNumbersAllElseAsTextAndEqualRowsKeepTheirOrder) {
  SessionList list({
      {L"2004-10-01 10:00:00", L"Bo", L"360000", L"1000", L"7"},
      {L"2004-09-01 10:00:00", L"Ann", L"60", L"9", L"7"},
      {L"2004-11-01 10:00:00", L"Bo", L"7200", L"10", L"7"},
  });
  const struct {
    SessionColumn column;
    bool descending;
    std::vector<std::size_t> sessions;
  } cases[] = {
      {SessionColumn::kDownloads, false, {1, 2, 0}}, {SessionColumn::kDownloads, true, {0, 2, 1}},
      {SessionColumn::kUploads, false, {0, 2, 1}},   {SessionColumn::kUploads, true, {0, 2, 1}},
      {SessionColumn::kUser, false, {1, 0, 2}},      {SessionColumn::kUser, true, {0, 2, 1}},
      {SessionColumn::kTime, false, {1, 2, 0}},      {SessionColumn::kTime, true, {0, 2, 1}},
      {SessionColumn::kDate, false, {0, 2, 1}},  // "10/...", "11/...", "9/..."
  };
  for (const auto& each : cases) {
    list.Sort(each.column, each.descending);
    EXPECT_THAT(each.sessions, ElementsAre(list.SessionAt(0), list.SessionAt(1), list.SessionAt(2)))
        << static_cast<int>(each.column);
  }
}

TEST_F(StatisticsTest, ATopListRanksTheFiveLargestSumsAlsoThoseInFloatingPoint) {
  EXPECT_EQ(TopListStatement(UsageMeasure::kBytesReceived),
            L"SELECT User, SUM(BytesRecv) AS DL FROM ConnLog \t\t\t                "
            L"GROUP BY User ORDER BY DL DESC LIMIT 5;");
  for (const auto& [user, seconds] :
       std::vector<std::pair<std::wstring, std::wstring>>{{L"Ann", L"100"},
                                                          {L"Bo", L"3700"},
                                                          {L"Bo", L"25"},
                                                          {L"Cid", L"60"},
                                                          {L"Dee", L"5"},
                                                          {L"Eve", L"4"},
                                                          {L"Fay", L"3"}})
    AddSession(L"2004-03-01 10:00:00", user, seconds, seconds + L"000000000000");
  AddSession(L"2004-03-01 10:00:00", L"Cid", L"?", L"?");
  const Ranking time =
      RankingOf(Query(TopListStatement(UsageMeasure::kSeconds)), UsageMeasure::kSeconds);
  EXPECT_EQ(time.names, L"1. Bo\n2. Ann\n3. Cid\n4. Dee\n5. Eve\n");
  EXPECT_EQ(time.values, L"01:02:05\n00:01:40\n00:01:00\n00:00:05\n00:00:04\n");
  const Ranking bytes = RankingOf(Query(TopListStatement(UsageMeasure::kBytesReceived)),
                                  UsageMeasure::kBytesReceived);
  EXPECT_THAT(bytes.values, HasSubstr(L"\n60,000,000,000,000\n"));
  EXPECT_EQ(RankingOf({}, UsageMeasure::kSeconds).names, L"");
}

}  // namespace
}  // namespace quillgate
