// Several processes on one database file, and processes that are killed.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "components/database_folder.h"
#include "components/engine_library.h"

namespace quillgate {

namespace {

using std::chrono_literals::operator""ms;

constexpr int kBusy = 5;

pid_t StartProcess(const std::function<bool()>& work) {
  const pid_t process = ::fork();
  if (process == 0) ::_exit(work() ? 0 : 1);
  return process;
}

bool EndedWell(pid_t process) {
  int status = 0;
  return ::waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// As callers do: a busy engine is asked again after a while.
bool RunPatiently(EngineConnection& connection, const std::string& sql) {
  for (int attempt = 0; attempt < 500; ++attempt) {
    const int code = connection.Run(sql).code;
    if (code != kBusy) return code == 0;
    std::this_thread::sleep_for(2ms);
  }
  return false;
}

bool WriteRows(const std::filesystem::path& file, int rows) {
  EngineConnection connection(file);
  if (!connection.IsOpen()) return false;
  if (!RunPatiently(connection, "CREATE TABLE IF NOT EXISTS Log (Writer, Number)")) return false;
  for (int row = 0; row < rows; ++row) {
    const std::string values = std::to_string(::getpid()) + ", " + std::to_string(row);
    if (!RunPatiently(connection, "INSERT INTO Log VALUES (" + values + ")")) return false;
  }
  return true;
}

TEST(EngineProcesses, ThatMakeAndFillOneFileAtOnceLoseNothing) {
  constexpr int kProcesses = 3;
  constexpr int kRows = 30;
  for (int round = 0; round < 2; ++round) {
    DatabaseFolder folder;
    std::vector<pid_t> processes;
    for (int process = 0; process < kProcesses; ++process) {
      processes.push_back(StartProcess([&] { return WriteRows(folder.File(), kRows); }));
    }
    for (const pid_t process : processes)
      EXPECT_TRUE(EndedWell(process));
    EXPECT_EQ(StockSqlite(folder.File(), "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(StockSqlite(folder.File(), "SELECT COUNT(*) FROM Log"),
              std::to_string(kProcesses * kRows));
  }
}

TEST(EngineProcesses, AnOpenFileCanBeOpenedAndClosedByAnother) {
  DatabaseFolder folder;
  EngineConnection connection(folder.File());
  ASSERT_EQ(connection.Run("CREATE TABLE Log (Writer, Number)").code, 0);
  ASSERT_EQ(connection.Run("BEGIN IMMEDIATE").code, 0);
  ASSERT_EQ(connection.Run("INSERT INTO Log VALUES ('first', 1)").code, 0);
  EXPECT_TRUE(EndedWell(StartProcess([&] {
    EngineConnection other(folder.File());
    return other.IsOpen() && other.Run("SELECT COUNT(*) FROM Log").Value() == "0" &&
           other.Run("INSERT INTO Log VALUES ('second', 1)").code == kBusy;
  })));
  ASSERT_EQ(connection.Run("COMMIT").code, 0);
  EXPECT_EQ(StockSqlite(folder.File(), "SELECT Writer FROM Log"), "first");
}

// Writes a pair of rows in each transaction, and a byte for each that is committed, until killed.
bool WritePairs(const std::filesystem::path& file, int reports) {
  EngineConnection connection(file);
  for (int pair = 0;; ++pair) {
    const std::string insert = "INSERT INTO Pairs VALUES (" + std::to_string(pair) + ")";
    if (!RunPatiently(connection, "BEGIN IMMEDIATE") || !RunPatiently(connection, insert) ||
        !RunPatiently(connection, insert) || !RunPatiently(connection, "COMMIT")) {
      return false;
    }
    if (::write(reports, "x", 1) != 1) return false;
  }
}

TEST(EngineProcesses, AKillWhileWritingLosesNoCommitAndNoHalf) {
  DatabaseFolder folder;
  {
    EngineConnection made(folder.File());
    ASSERT_EQ(made.Run("CREATE TABLE Pairs (Number)").code, 0);
  }
  long committed = 0;
  for (int kill = 0; kill < 20; ++kill) {
    int reports[2];
    ASSERT_EQ(::pipe(reports), 0);
    const pid_t victim = StartProcess([&] { return WritePairs(folder.File(), reports[1]); });
    ::close(reports[1]);
    // A different number of commits each time, so that the kill hits different moments.
    char report = 0;
    for (int seen = 0; seen <= kill * 3; ++seen)
      ASSERT_EQ(::read(reports[0], &report, 1), 1);
    ::kill(victim, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(victim, &status, 0), victim);
    EXPECT_TRUE(WIFSIGNALED(status));
    committed += kill * 3 + 1;
    while (::read(reports[0], &report, 1) == 1)
      ++committed;
    ::close(reports[0]);

    EXPECT_EQ(StockSqlite(folder.File(), "PRAGMA integrity_check"), "ok");
    EngineConnection connection(folder.File());
    ASSERT_TRUE(connection.IsOpen()) << connection.Message();
    const long rows = std::stol(*connection.Run("SELECT COUNT(*) FROM Pairs").Value());
    EXPECT_EQ(rows % 2, 0);
    EXPECT_GE(rows / 2, committed);
    committed = rows / 2;  // one that died between its commit and its report counts too
  }
}

}  // namespace

}  // namespace quillgate
