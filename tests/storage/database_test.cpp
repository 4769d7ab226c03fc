// The database on the real engine.
#include "storage/database.h"

#include <gmock/gmock.h>

#include "platform/kernel/path.h"
#include "platform/testing/simulated_machine.h"
#include "storage/db_transaction.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class RealDatabase : public testing::Test {
 protected:
  DbRows Query(const std::wstring& sql) {
    DbRows rows;
    database_.DbQuery(sql, rows);
    return rows;
  }
  std::filesystem::path File(const std::string& ending = "") const {
    return machine_.ProgramFolder() / ("quillgate.dat" + ending);
  }

  platform::SimulatedMachine machine_;
  Database database_;
};

TEST_F(RealDatabase, EveryTableHasItsColumnsInOrder) {
  const std::wstring users =
      L"Name, Password, TimeLimitEnabled, TimeLimit, TimeLimitPeriod, DLLimitEnabled, DLLimit, "
      L"DLLimitPeriod, ConnectHours, Privileges";
  const std::wstring log = L"User, Seconds, BytesSent, BytesRecv, StartDate";
  const std::pair<std::wstring, std::wstring> tables[] = {
      {L"Settings", L"Key, Value"},
      {L"Users_Quillgate", users},
      {L"Users_Windows", users},
      {L"Users_None", users},
      {L"ConnHours", L"User, Weekday, Hour"},
      {L"ConnLog", log},
      {L"CrashLog", log},
  };
  for (const auto& [table, columns] : tables)
    EXPECT_THAT(Query(L"SELECT sql FROM sqlite_master WHERE name = '" + table + L"';"),
                ElementsAre(ElementsAre(L"CREATE TABLE " + table + L" (" + columns + L")")));
}

TEST_F(RealDatabase, OpeningTheFileBesideTheExecutableAgainLosesNoRow) {
  Database().DbExecute(L"INSERT INTO CrashLog VALUES ('Anna', '1', '2', '3', '');");
  EXPECT_EQ(DatabasePath(), platform::WindowsPath(File()));
  EXPECT_TRUE(std::filesystem::exists(File()));
  EXPECT_THAT(Query(L"SELECT * FROM CrashLog;"), SizeIs(1));
}

TEST_F(RealDatabase, ATransactionTakesEffectWholeOrNotAtAll) {
  {
    DbTransaction transaction(database_);
    database_.DbExecute(L"INSERT INTO ConnHours VALUES ('kept', '1', '2');");
    transaction.Commit();
  }
  {
    DbTransaction transaction(database_);
    database_.DbExecute(L"DELETE FROM ConnHours;");
  }
  {
    DbTransaction transaction(database_);
    database_.DbExecute(L"DELETE FROM ConnHours;");
    EXPECT_THROW(database_.DbExecute(L"INSERT INTO Missing VALUES ('1');"), DBerror);
    EXPECT_THROW(transaction.Commit(), DBerror);
  }
  EXPECT_THAT(Query(L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"kept")));
}

TEST_F(RealDatabase, AFileThatWasReplacedOrDeletedIsReadAfreshWithItsTables) {
  database_.DbExecute(L"INSERT INTO ConnHours VALUES ('old', '1', '2');");
  const std::filesystem::path backup = machine_.ProgramFolder() / "other.dat";
  Database(platform::WindowsPath(backup))
      .DbExecute(L"INSERT INTO ConnHours VALUES ('new', '1', '2');");
  const auto removeLog = [this] {
    for (const char* ending : {"-wal", "-shm"})
      std::filesystem::remove(File(ending));
  };
  removeLog();
  std::filesystem::rename(backup, File());
  EXPECT_THAT(Query(L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"new")));
  removeLog();
  std::filesystem::remove(File());
  database_.DbExecute(L"INSERT INTO ConnHours VALUES ('newest', '1', '2');");
  EXPECT_THAT(Query(L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"newest")));
}

TEST_F(RealDatabase, AnotherConnectionsLockMakesAWriteStayBusy) {
  Database holder;
  database_.DbOpen();
  const DbTransaction transaction(holder);
  DbRows rows;
  EXPECT_FALSE(database_.Run(L"INSERT INTO ConnHours VALUES ('x', '1', '2');", rows));
  EXPECT_THAT(Query(L"SELECT * FROM ConnHours;"), testing::IsEmpty());
  EXPECT_THROW(DbTransaction{database_}, DBerror);
}

TEST_F(RealDatabase, TotalsOfTheLogReadAnIndexAlone) {
  for (const wchar_t* condition : {L"", L" AND User = 'Anna'"}) {
    const DbRows plan = Query(std::wstring(L"EXPLAIN QUERY PLAN SELECT SUM(BytesRecv) FROM ConnLog "
                                           L"WHERE StartDate >= '2005-03-01 00:00:00' AND "
                                           L"StartDate <= '2005-03-31 23:59:59'") +
                              condition + L";");
    ASSERT_THAT(plan, SizeIs(1));
    EXPECT_THAT(plan[0].back(), testing::HasSubstr(L"SEARCH ConnLog USING COVERING INDEX"));
  }
}

}  // namespace
}  // namespace quillgate
