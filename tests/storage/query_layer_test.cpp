// The query layer over an engine whose answers are scripted.
#include <gmock/gmock.h>

#include <chrono>
#include <future>

#include "platform/testing/simulated_machine.h"
#include "storage/database.h"
#include "storage/db_transaction.h"
#include "storage/scripted_engine.h"

namespace quillgate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Fault = std::pair<std::wstring, int>;

constexpr wchar_t kQuery[] = L"SELECT a, b FROM t;";
const EngineAnswer kBusy{5, "database is locked", {}};
const EngineAnswer kMisuse{21, "bad connection", {}};
const EngineAnswer kOneRow{0, "", {{"x", "y"}}};

// A database opened on a scripted engine, with nothing asked of it yet.
class QueryLayer : public testing::Test {
 protected:
  void SetUp() override {
    database_.DbOpen();
    engine_.ClearStatements();
  }
  void TearDown() override { EXPECT_EQ(engine_.Unreleased(), 0); }

  // Text and code of a statement's failure; no text when it succeeds.
  Fault FaultOf(const std::wstring& sql) {
    try {
      database_.DbQuery(sql, rows_);
      return {};
    } catch (const DBerror& error) {
      return {error.Message(), error.Code()};
    }
  }

  platform::SimulatedMachine machine_;
  ScriptedEngine engine_;
  Database database_;
  DbRows rows_{{L"left over"}};
};

TEST_F(QueryLayer, ValuesKeepTheOrderOfRowsAndColumnsAndNullIsEmpty) {
  engine_.Answer(
      {{0, "", {{"a1", std::nullopt}, {"", "b2"}, {"\xC3\xA5\xC3\xA4", "\xE2\x82\xAC"}}}});
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_, ElementsAre(ElementsAre(L"a1", L""), ElementsAre(L"", L"b2"),
                                 ElementsAre(L"\u00E5\u00E4", L"\u20AC")));
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_, IsEmpty());
}

TEST_F(QueryLayer, AStatementOf1023BytesRunsAndOneThatWouldBeCutNeverReachesTheEngine) {
  const std::wstring longest = L"--" + std::wstring(1021, L'x');
  database_.DbQuery(longest, rows_);
  const std::pair<std::wstring, const wchar_t*> cases[] = {
      {longest + L"x", L"Query too long."},
      {L"--" + std::wstring(600, L'\u00E5'), L"Query too long."},
      {std::wstring(L"DELETE FROM t\0 WHERE a = 1", 26), L"The query holds an invalid character."},
  };
  for (const auto& [sql, message] : cases)
    EXPECT_EQ(FaultOf(sql), Fault(message, -1));
  EXPECT_THAT(engine_.Statements(), ElementsAre("--" + std::string(1021, 'x')));
}

TEST_F(QueryLayer, ABusyEngineIsTriedTwentyTimesUnlessItRecovers) {
  for (const int code : {5, 6, 17}) {
    engine_.AnswerAlways({code, "later", {}});
    engine_.ClearStatements();
    rows_ = {{L"left over"}};
    const auto before = machine_.Time().TotalSlept();
    EXPECT_NO_THROW(database_.DbQuery(kQuery, rows_)) << code;
    EXPECT_THAT(rows_, IsEmpty()) << code;
    EXPECT_THAT(engine_.Statements(), SizeIs(20)) << code;
    EXPECT_EQ(machine_.Time().TotalSlept() - before, std::chrono::seconds(2)) << code;
    EXPECT_FALSE(database_.Run(kQuery, rows_)) << code;
    engine_.Answer({{code, "later", {}}, {code, "later", {}}, kOneRow});
    EXPECT_TRUE(database_.Run(kQuery, rows_)) << code;
    EXPECT_THAT(rows_, ElementsAre(ElementsAre(L"x", L"y"))) << code;
  }
}

TEST_F(QueryLayer, AMisusedConnectionIsReopenedOnTheSameFileUntilThatSucceeds) {
  engine_.Answer({kMisuse, kOneRow});
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_, ElementsAre(ElementsAre(L"x", L"y")));
  EXPECT_EQ(engine_.OpenConnections(), 1);
  ASSERT_THAT(engine_.OpenedPaths(), SizeIs(2));
  EXPECT_EQ(engine_.OpenedPaths()[0], engine_.OpenedPaths()[1]);
  EXPECT_EQ(machine_.Time().TotalSlept(), std::chrono::milliseconds(100));

  engine_.Answer({kMisuse, kOneRow});
  engine_.AnswerOpenings({"no such disk"});
  EXPECT_EQ(FaultOf(kQuery), Fault(L"no such disk", -1));
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_, ElementsAre(ElementsAre(L"x", L"y")));
}

TEST_F(QueryLayer, AnEngineErrorKeepsItsCodeAnd256CharactersAndFreesTheLock) {
  for (const int code : {1, 4, 7, 16, 18, 20, 22, 101}) {
    engine_.Answer({{code, "no such table: \xC3\xA5", {}}});
    rows_ = {{L"left over"}};
    EXPECT_EQ(FaultOf(kQuery), Fault(L"no such table: \u00E5", code));
    EXPECT_THAT(rows_, IsEmpty());
  }
  engine_.Answer({{1, std::string(300, 'm'), {}}});
  EXPECT_EQ(FaultOf(kQuery), Fault(std::wstring(256, L'm'), 1));
  std::future<void> other = std::async(std::launch::async, [this] { database_.DbExecute(kQuery); });
  ASSERT_EQ(other.wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST_F(QueryLayer, AValueOf512CharactersFailsTheStatementInsteadOfBeingCut) {
  std::string letters;
  for (int count = 0; count < 511; ++count)
    letters += "\xC3\xA5";
  engine_.Answer({{0, "", {{std::string(511, 'a'), letters}}}});
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_,
              ElementsAre(ElementsAre(std::wstring(511, L'a'), std::wstring(511, L'\u00E5'))));
  for (const std::string& value : {std::string(512, 'a'), letters + "a"}) {
    engine_.Answer({{0, "", {{"first", "row"}, {"x", value}}}});
    EXPECT_EQ(FaultOf(kQuery),
              Fault(L"An error occurred when retrieving result from database.", -1));
    EXPECT_THAT(rows_, IsEmpty());
  }
}

TEST_F(QueryLayer, StatementsAfterCloseSayThatNoDatabaseIsOpen) {
  database_.DbClose();
  database_.DbClose();
  EXPECT_EQ(engine_.OpenConnections(), 0);
  EXPECT_EQ(::GetModuleHandleW(L"qgdbeng.dll"), nullptr);
  EXPECT_EQ(FaultOf(kQuery), Fault(L"No database open.", -1));
  EXPECT_THAT(rows_, SizeIs(1));
}

TEST_F(QueryLayer, AnyStatementThatStaysBusyFailsItsTransaction) {
  {
    DbTransaction transaction(database_);
    engine_.AnswerAlways(kBusy);
    EXPECT_EQ(FaultOf(kQuery).second, 5);
    engine_.AnswerAlways({});
    EXPECT_EQ(FaultOf(kQuery).second, -1);
    EXPECT_THROW(transaction.Commit(), DBerror);
  }
  EXPECT_EQ(engine_.Statements().front(), "BEGIN IMMEDIATE;");
  EXPECT_EQ(engine_.Statements().back(), "ROLLBACK;");
  EXPECT_THAT(engine_.Statements(), SizeIs(22));
}

TEST_F(QueryLayer, NothingOfATransactionRunsOnAReopenedConnection) {
  {
    DbTransaction transaction(database_);
    engine_.Answer({kMisuse, {1, "no transaction is active", {}}});
    EXPECT_EQ(FaultOf(L"DELETE FROM t;"), Fault(L"bad connection", 21));
    EXPECT_EQ(FaultOf(L"INSERT INTO t VALUES (1);").second, -1);
    EXPECT_THROW(transaction.Commit(), DBerror);
  }
  EXPECT_THAT(engine_.Statements(), ElementsAre("BEGIN IMMEDIATE;", "DELETE FROM t;", "ROLLBACK;"));
  EXPECT_THAT(engine_.OpenedPaths(), SizeIs(2));
  engine_.Answer({kOneRow});
  database_.DbQuery(kQuery, rows_);
  EXPECT_THAT(rows_, SizeIs(1));
}

TEST_F(QueryLayer, ACommitThatFailsIsRolledBack) {
  for (const EngineAnswer& failure : {kBusy, EngineAnswer{13, "disk full", {}}}) {
    {
      DbTransaction transaction(database_);
      engine_.AnswerAlways(failure);
      EXPECT_THROW(transaction.Commit(), DBerror);
      engine_.AnswerAlways({});
    }
    EXPECT_EQ(engine_.Statements().back(), "ROLLBACK;");
  }
}

TEST_F(QueryLayer, ARollbackThatFailsIsMadeCertainByReopeningAndABeginThatFailsNeedsNone) {
  {
    const DbTransaction transaction(database_);
    engine_.AnswerAlways(kBusy);
  }
  EXPECT_THAT(engine_.OpenedPaths(), SizeIs(2));
  EXPECT_EQ(engine_.OpenConnections(), 1);
  EXPECT_THROW(DbTransaction{database_}, DBerror);
  engine_.AnswerAlways({});
  EXPECT_NO_THROW(database_.DbExecute(kQuery));
  EXPECT_THAT(engine_.OpenedPaths(), SizeIs(2));
}

TEST(EngineLoading, ALibraryWithoutAnyOneOfTheEntryPointsIsRefusedAndReleased) {
  const platform::SimulatedMachine machine;
  for (const int number : {1, 2, 3, 4, 5, 6, 10, 11, 18, 19}) {
    const ScriptedEngine engine("dbengproc" + std::to_string(number));
    try {
      Database().DbOpen();
      ADD_FAILURE() << number;
    } catch (const DBerror& error) {
      EXPECT_EQ(error.Message(),
                L"There was an error loading qgdbeng.dll.\n\nPlease re-install the program.");
      EXPECT_EQ(error.Code(), -1);
    }
    EXPECT_EQ(::GetModuleHandleW(L"qgdbeng.dll"), nullptr) << number;
  }
}

TEST(EngineLoading, AStatementOpensTheDatabaseAndAFailedOpeningIsTriedAgain) {
  const platform::SimulatedMachine machine;
  ScriptedEngine engine;
  engine.AnswerOpenings({"it is a folder", "it is a folder"});
  Database database;
  DbRows rows;
  EXPECT_THROW(database.DbQuery(kQuery, rows), DBerror);
  EXPECT_THROW(DbTransaction{database}, DBerror);
  EXPECT_THAT(engine.Statements(), IsEmpty());
  database.DbQuery(kQuery, rows);
  EXPECT_THAT(engine.Statements(), ElementsAre("SELECT a, b FROM t;"));
  EXPECT_THAT(engine.OpenedPaths(), SizeIs(3));
  // A path that does not fit is not cut.
  EXPECT_THROW(Database(L"\\" + std::wstring(260, L'p')).DbOpen(), DBerror);
  EXPECT_THAT(engine.OpenedPaths(), SizeIs(3));
}

TEST(SqlTextTest, AValueThatWouldEndItsQuotesIsRefused) {
  EXPECT_EQ(SqlText(L"Anna \u00C5"), L"'Anna \u00C5'");
  EXPECT_EQ(SqlText(L""), L"''");
  EXPECT_THROW(SqlText(L"O'Hara"), DBerror);
  EXPECT_THROW(SqlText(std::wstring_view(L"a\0b", 3)), DBerror);
}

}  // namespace
}  // namespace quillgate
