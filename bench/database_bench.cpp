// Measures the overhead of the query layer on top of the bare database. Each pair runs the same
// statement on the same file.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <string>

#include "bare_database.h"
#include "platform/testing/simulated_machine.h"
#include "storage/database.h"
#include "storage/settings.h"
#include "usage/automation_date.h"
#include "usage/usage_total.h"
#include "usage/week_calendar.h"

namespace quillgate {
namespace {

// Ten users over ten years, one session about every five minutes.
constexpr char kFillLog[] =
    "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999999) "
    "INSERT INTO ConnLog SELECT 'User' || (i * 7 % 10), CAST(i % 7200 AS TEXT), "
    "CAST(i * 31 % 1000000 AS TEXT), CAST(i * 3701 % 100000000 AS TEXT), "
    "strftime('%Y-%m-%d %H:%M:%S', '1996-01-01', '+' || (i * 315) || ' seconds') FROM n;";

// One file with a full log, opened through the layer and directly.
struct Setting {
  Setting() : bare((machine.ProgramFolder() / "quillgate.dat").string()) {
    Settings(database).SetSetting(SettingKey::kLogonSystem, L"QUILLGATE");
    bare.Execute(kFillLog);
    bare.Execute("PRAGMA wal_checkpoint(TRUNCATE);");
  }

  platform::SimulatedMachine machine;
  Database database;
  BareDatabase bare;
};

Setting& TheSetting() {
  static Setting setting;
  return setting;
}

void CompareQuery(benchmark::State& state, const std::wstring& sql) {
  CompareQueries(state, TheSetting().bare, TheSetting().database, {sql});
}

void OneRow(benchmark::State& state) {
  CompareQuery(state, L"SELECT Value FROM Settings WHERE Key = '845';");
}

void TenThousandRowsOfFiveColumns(benchmark::State& state) {
  CompareQuery(state,
               L"SELECT StartDate, User, Seconds, BytesRecv, BytesSent FROM ConnLog LIMIT 10000;");
}

// Compares with the fastest way to query the database: a prepared statement on the same index.
void CompareMonthTotals(benchmark::State& state, const std::wstring& user,
                        const std::string& condition) {
  Setting& setting = TheSetting();
  const WeekCalendar calendar;
  const UsageTotal total(UsageMeasure::kBytesReceived, user, setting.database, calendar);
  const std::string sql =
      "SELECT SUM(BytesRecv) FROM ConnLog WHERE StartDate >= '2005-03-01 00:00:00' AND "
      "StartDate <= '2005-03-31 23:59:59'" +
      condition + ";";
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(setting.bare.Get(), sql.c_str(), -1, &statement, nullptr);
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(statement, sqlite3_finalize);
  sqlite3_int64 bareSum = 0;
  std::uint64_t layerSum = 0;
  Compare(
      state,
      [&] {
        sqlite3_step(statement);
        bareSum = sqlite3_column_int64(statement, 0);
        sqlite3_reset(statement);
      },
      [&] { layerSum = total.Sum(DateOf(2005, 3, 1), DateOf(2005, 3, 31)); });
  if (layerSum == 0 || layerSum != static_cast<std::uint64_t>(bareSum)) {
    state.SkipWithError("the totals differ");
  }
}

void MonthTotalOfOneUserInAMillionRows(benchmark::State& state) {
  CompareMonthTotals(state, L"User3", " AND User = 'User3'");
}

void MonthTotalOfEverybodyInAMillionRows(benchmark::State& state) {
  CompareMonthTotals(state, L"", "");
}

BENCHMARK(OneRow)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(TenThousandRowsOfFiveColumns)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(MonthTotalOfOneUserInAMillionRows)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(MonthTotalOfEverybodyInAMillionRows)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillgate
