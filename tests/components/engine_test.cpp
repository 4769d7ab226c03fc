// The engine library's contract, statement by statement.
#include <gtest/gtest.h>

#include <string>

#include "components/engine_library.h"
#include "lab/database_folder.h"

namespace quillgate {

namespace {

class EngineStatements : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(connection_.IsOpen()) << connection_.Message();
    ASSERT_EQ(connection_.Run("CREATE TABLE Users (Name, Minutes)").code, 0);
    ASSERT_EQ(connection_.Run("INSERT INTO Users VALUES ('Ann', '30'), ('Bo', NULL)").code, 0);
  }

  lab::DatabaseFolder folder_;
  EngineConnection connection_{folder_.File()};
};

TEST_F(EngineStatements, NamesComeBeforeValuesAndNullIsNoText) {
  const EngineResult result = connection_.Run("SELECT Name, Minutes FROM Users ORDER BY Name");
  EXPECT_EQ(result.columns, (std::vector<std::string>{"Name", "Minutes"}));
  EXPECT_EQ(result.rows, (std::vector<std::vector<std::optional<std::string>>>{
                             {"Ann", "30"}, {"Bo", std::nullopt}}));
  EXPECT_EQ(connection_.Run("SELECT SUM(Minutes) FROM Users").Value(), "30") << "of texts";
  EXPECT_EQ(connection_.Run("SELECT SUM(Minutes) FROM Users WHERE Name = 'Cy'").Value(),
            std::nullopt);
}

// A caller that does not release the table of an empty result must not leak it: the sanitizer's
// leak check holds this test.
TEST_F(EngineStatements, AnEmptyResultHasNoRowsAndNeedsNoRelease) {
  for (const char* sql : {"SELECT * FROM Users WHERE Name = 'Cy'", "", " \n ;;", "-- nothing",
                          "/* nothing */", "/* open"}) {
    char** table = nullptr;
    char* message = nullptr;
    int rows = -1;
    int columns = -1;
    EXPECT_EQ(Engine().getTable(connection_.Get(), sql, &table, &rows, &columns, &message), 0)
        << sql;
    EXPECT_EQ(rows, 0);
    EXPECT_EQ(columns, 0);
    EXPECT_NE(table, nullptr);
    EXPECT_EQ(message, nullptr);
  }
}

TEST_F(EngineStatements, LongValuesAndManyRowsArriveWhole) {
  const std::string longText(5000, 'x');
  ASSERT_EQ(connection_.Run("INSERT INTO Users VALUES ('" + longText + "', '')").code, 0);
  EXPECT_EQ(connection_.Run("SELECT Name FROM Users WHERE Minutes = ''").Value(), longText);

  const EngineResult many = connection_.Run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
      "SELECT i, i || '-' || i, NULL FROM n");
  ASSERT_EQ(many.rows.size(), 20000u);
  for (std::size_t row = 0; row < many.rows.size(); row += 997) {
    const std::string number = std::to_string(row + 1);
    EXPECT_EQ(many.rows[row][0], number);
    EXPECT_EQ(many.rows[row][1], number + "-" + number);
    EXPECT_EQ(many.rows[row][2], std::nullopt);
  }
}

TEST_F(EngineStatements, AStatementThatIsRefusedHasItsCodeAndReasonAndChangesNothing) {
  constexpr const char* kTwo = "more than one statement";
  const std::pair<const char*, const char*> cases[] = {
      {"DELETE FROM Users; DELETE FROM Users", kTwo},
      {"DELETE FROM Users;;\n/**/x", kTwo},
      {"DELETE FROM Users; --c\nSELECT 1", kTwo},
      {";DELETE FROM Users;SELECT 1", kTwo},
      {"PRAGMA foreign_keys = ON; SELECT 1", kTwo},
      {"SELECT * FROM Nowhere", "no such table: Nowhere"},
      {"INSERT INTO Users VALUES ('O'Hara', '')", "near \"Hara\": syntax error"},
  };
  for (const auto& [sql, reason] : cases) {
    const EngineResult result = connection_.Run(sql);
    EXPECT_EQ(result.code, kError) << sql;
    EXPECT_EQ(result.message, reason) << sql;
    EXPECT_EQ(Engine().latestCode(connection_.Get()), kError) << sql;
    EXPECT_EQ(connection_.Run("SELECT COUNT(*) FROM Users").Value(), "2");
    EXPECT_EQ(Engine().latestCode(connection_.Get()), 0);
  }
  EXPECT_EQ(connection_.Run("PRAGMA foreign_keys").Value(), "0");
}

TEST_F(EngineStatements, ASemicolonInsideOneStatementDoesNotMakeTwo) {
  EXPECT_EQ(connection_.Run("SELECT 'a;b'; -- ; end\n /* ; */ ;").Value(), "a;b");
  EXPECT_EQ(connection_
                .Run("CREATE TRIGGER t AFTER DELETE ON Users BEGIN DELETE FROM Users; SELECT 1; "
                     "END;")
                .code,
            0);
}

TEST_F(EngineStatements, AKeptStatementSeesChangedSchemas) {
  const std::string sql = "SELECT * FROM Users WHERE Name = 'Ann'";
  ASSERT_EQ(connection_.Run(sql).columns.size(), 2u);
  ASSERT_EQ(connection_.Run("ALTER TABLE Users ADD COLUMN Rights").code, 0);
  EXPECT_EQ(connection_.Run(sql).columns, (std::vector<std::string>{"Name", "Minutes", "Rights"}));
  ASSERT_EQ(connection_.Run("DROP TABLE Users").code, 0);
  EXPECT_EQ(connection_.Run(sql).code, kError);
}

TEST_F(EngineStatements, AKeptStatementThatWasBusyRunsAgain) {
  EngineConnection other(folder_.File());
  const std::string sql = "INSERT INTO Users VALUES ('Di', '1')";
  ASSERT_EQ(other.Run("BEGIN IMMEDIATE").code, 0);
  EXPECT_EQ(connection_.Run(sql).code, kBusy);
  ASSERT_EQ(other.Run("COMMIT").code, 0);
  EXPECT_EQ(connection_.Run(sql).code, 0);
  EXPECT_EQ(other.Run("SELECT COUNT(*) FROM Users WHERE Name = 'Di'").Value(), "1");
}

TEST_F(EngineStatements, ManyDifferentStatementsDoNotMixTheirResults) {
  for (int round = 0; round < 3; ++round) {
    for (int number = 0; number < 50; ++number) {
      const std::string text = std::to_string(number);
      EXPECT_EQ(connection_.Run("SELECT " + text + " AS c" + text).Value(), text);
    }
  }
}

TEST_F(EngineStatements, TransactionsTakeBackEverything) {
  EXPECT_EQ(Engine().inTransaction(connection_.Get()), 0);
  ASSERT_EQ(connection_.Run("BEGIN").code, 0);
  EXPECT_EQ(Engine().inTransaction(connection_.Get()), 1);
  ASSERT_EQ(connection_.Run("DELETE FROM Users").code, 0);
  EXPECT_EQ(Engine().changedRows(connection_.Get()), 2);
  ASSERT_EQ(connection_.Run("ROLLBACK").code, 0);
  EXPECT_EQ(connection_.Run("SELECT COUNT(*) FROM Users").Value(), "2");
}

TEST_F(EngineStatements, MissingArgumentsAndConnectionsAreMisuse) {
  char** table = nullptr;
  char* message = nullptr;
  int rows = 0;
  int columns = 0;
  void* const open = connection_.Get();
  EXPECT_EQ(Engine().getTable(nullptr, "SELECT 1", &table, &rows, &columns, nullptr), kMisuse);
  EXPECT_EQ(Engine().getTable(open, nullptr, &table, &rows, &columns, nullptr), kMisuse);
  EXPECT_EQ(Engine().getTable(open, "SELECT 1", nullptr, &rows, &columns, nullptr), kMisuse);
  EXPECT_EQ(Engine().getTable(open, "SELECT 1", &table, nullptr, &columns, nullptr), kMisuse);
  EXPECT_EQ(Engine().getTable(open, "SELECT 1", &table, &rows, nullptr, &message), kMisuse);
  EXPECT_STREQ(message, "an argument is missing");
  Engine().freeMessage(message);
  Engine().freeMessage(nullptr);
  Engine().freeTable(nullptr);
  EXPECT_EQ(Engine().open(nullptr, 0, nullptr), nullptr);
  EXPECT_EQ(Engine().open(folder_.File().c_str(), 1, nullptr), nullptr);
}

TEST_F(EngineStatements, AClosedConnectionIsMisuseAndNotTheNextOne) {
  void* const closed = connection_.Get();
  connection_.Close();
  EngineConnection next(folder_.File());
  EXPECT_EQ(RunStatement(closed, "SELECT 1").code, kMisuse);
  EXPECT_EQ(Engine().latestCode(closed), kMisuse);
  Engine().close(closed);
  EXPECT_EQ(next.Run("SELECT COUNT(*) FROM Users").Value(), "2");
}

TEST(Engine, CodesHaveMeaningsAndTheEngineAVersion) {
  EXPECT_STREQ(Engine().meaning(kBusy), "database is locked");
  EXPECT_STREQ(Engine().meaning(kMisuse), "bad parameter or other API misuse");
  EXPECT_EQ(std::string(Engine().version()).substr(0, 2), "3.");
}

}  // namespace

}  // namespace quillgate
