// The database on the real engine.
#include "storage/database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kernel/path.h"
#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class RealDatabase : public testing::Test {
 protected:
  static DbRows Query(Database& database, const std::wstring& sql) {
    DbRows rows;
    database.DbQuery(sql, rows);
    return rows;
  }

  platform::SimulatedMachine machine_;
};

TEST_F(RealDatabase, TheFileLiesBesideTheExecutable) {
  EXPECT_EQ(DatabasePath(), platform::WindowsPath(machine_.ProgramFolder() / "quillgate.dat"));
  Database database;
  database.DbOpen();
  EXPECT_TRUE(std::filesystem::exists(machine_.ProgramFolder() / "quillgate.dat"));
}

TEST_F(RealDatabase, EveryTableHasItsColumnsInOrder) {
  Database database;
  const std::wstring users =
      L"Name, Password, TimeLimitEnabled, TimeLimit, TimeLimitPeriod, DLLimitEnabled, DLLimit, "
      L"DLLimitPeriod, ConnectHours, Privileges";
  const std::wstring log = L"User, Seconds, BytesSent, BytesRecv, StartDate";
  const std::vector<std::pair<std::wstring, std::wstring>> tables = {
      {L"Settings", L"Key, Value"},
      {L"Users_Quillgate", users},
      {L"Users_Windows", users},
      {L"Users_None", users},
      {L"ConnHours", L"User, Weekday, Hour"},
      {L"ConnLog", log},
      {L"CrashLog", log}};
  for (const auto& [table, columns] : tables) {
    const std::wstring sql = L"SELECT sql FROM sqlite_master WHERE type = 'table' AND name = '";
    EXPECT_THAT(Query(database, sql + table + L"';"),
                ElementsAre(ElementsAre(L"CREATE TABLE " + table + L" (" + columns + L")")));
  }
}

TEST_F(RealDatabase, OpeningAgainLosesNoRow) {
  {
    Database database;
    database.DbExecute(L"INSERT INTO Users_None (Name) VALUES ('Anna');");
    database.DbExecute(L"INSERT INTO CrashLog VALUES ('Anna', '1', '2', '3', '');");
  }
  Database again;
  again.DbOpen();
  EXPECT_THAT(Query(again, L"SELECT Name FROM Users_None;"), ElementsAre(ElementsAre(L"Anna")));
  EXPECT_THAT(Query(again, L"SELECT * FROM CrashLog;"), SizeIs(1));
}

TEST_F(RealDatabase, AnErrorOfTheEngineTellsItsOwnText) {
  Database database;
  DbRows rows;
  try {
    database.DbQuery(L"SELECT * FROM Missing;", rows);
    FAIL();
  } catch (const DBerror& error) {
    EXPECT_EQ(error.Message(), L"no such table: Missing");
    EXPECT_EQ(error.Code(), 1);
  }
}

TEST_F(RealDatabase, ATransactionTakesEffectWholeOrNotAtAll) {
  Database database;
  {
    DbTransaction transaction(database);
    database.DbExecute(L"INSERT INTO ConnHours VALUES ('kept', '1', '2');");
    transaction.Commit();
  }
  {
    DbTransaction transaction(database);
    database.DbExecute(L"DELETE FROM ConnHours;");
  }
  {
    DbTransaction transaction(database);
    database.DbExecute(L"DELETE FROM ConnHours;");
    EXPECT_THROW(database.DbExecute(L"INSERT INTO Missing VALUES ('1');"), DBerror);
    EXPECT_THROW(transaction.Commit(), DBerror);
  }
  EXPECT_THAT(Query(database, L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"kept")));
}

TEST_F(RealDatabase, AFileThatWasReplacedByABackupIsReadAfresh) {
  Database database;
  database.DbExecute(L"INSERT INTO ConnHours VALUES ('old', '1', '2');");
  {
    Database other(platform::WindowsPath(machine_.ProgramFolder() / "other.dat"));
    other.DbExecute(L"INSERT INTO ConnHours VALUES ('new', '1', '2');");
  }
  for (const char* log : {"quillgate.dat-wal", "quillgate.dat-shm"})
    std::filesystem::remove(machine_.ProgramFolder() / log);
  std::filesystem::rename(machine_.ProgramFolder() / "other.dat",
                          machine_.ProgramFolder() / "quillgate.dat");
  EXPECT_THAT(Query(database, L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"new")));
}

TEST_F(RealDatabase, AFileThatWasDeletedIsMadeAnewWithItsTables) {
  Database database;
  database.DbOpen();
  for (const char* file : {"quillgate.dat", "quillgate.dat-wal", "quillgate.dat-shm"})
    std::filesystem::remove(machine_.ProgramFolder() / file);
  database.DbExecute(L"INSERT INTO ConnHours VALUES ('new', '1', '2');");
  EXPECT_THAT(Query(database, L"SELECT User FROM ConnHours;"), ElementsAre(ElementsAre(L"new")));
}

TEST_F(RealDatabase, AnotherConnectionsLockMakesAWriteStayBusy) {
  Database holder;
  Database database;
  database.DbOpen();
  const DbTransaction transaction(holder);
  DbRows rows;
  EXPECT_FALSE(database.Run(L"INSERT INTO ConnHours VALUES ('x', '1', '2');", rows));
  EXPECT_THAT(Query(database, L"SELECT * FROM ConnHours;"), IsEmpty());
  EXPECT_THROW(DbTransaction{database}, DBerror);
}

TEST_F(RealDatabase, TotalsOfTheLogReadAnIndexAlone) {
  Database database;
  for (const wchar_t* condition : {L"", L" AND User = 'Anna'"}) {
    const DbRows plan =
        Query(database, std::wstring(L"EXPLAIN QUERY PLAN SELECT SUM(BytesRecv) FROM ConnLog "
                                     L"WHERE StartDate >= '2005-03-01 00:00:00' AND "
                                     L"StartDate <= '2005-03-31 23:59:59'") +
                            condition + L";");
    ASSERT_THAT(plan, SizeIs(1));
    EXPECT_THAT(plan[0].back(), testing::HasSubstr(L"SEARCH ConnLog USING COVERING INDEX"));
  }
}

}  // namespace
}  // namespace quillgate
