// What the engine library opens, what it refuses, and what it does to files and disks.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "components/engine_library.h"
#include "lab/database_folder.h"

namespace quillgate {

namespace {

using lab::DatabaseFolder;

unsigned ModeOf(const std::filesystem::path& file) {
  struct stat status {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
  return status.st_mode & 0777;
}

// What it mounts is seen by its own thread alone. False when this process may not do that; `work`
// did not run then.
bool WithPrivateMounts(const std::function<void()>& work) {
  bool isPrivate = false;
  std::thread([&] {
    isPrivate = ::unshare(CLONE_NEWNS) == 0 &&
                ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    if (isPrivate) work();
  }).join();
  return isPrivate;
}

TEST(EngineFile, LinksFoldersAndMissingFoldersAreRefusedWithTheirReason) {
  for (const std::string suffix : {"", "-wal", "-shm"}) {
    DatabaseFolder folder;
    const std::string file = folder.File().native() + suffix;
    std::filesystem::create_symlink("elsewhere", file);
    EXPECT_EQ(EngineConnection(folder.File()).Message(), "it is a link: " + file);
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(EngineConnection(folder.File()).Message(), "it is a folder: " + file);
  }
  EngineConnection missing(DatabaseFolder().Path() / "missing" / "quillgate.dat");
  EXPECT_FALSE(missing.IsOpen());
  EXPECT_TRUE(missing.Message().starts_with("No such file or directory")) << missing.Message();
}

TEST(EngineFile, AFileThatIsNoDatabaseIsRefusedAndStaysAsItIs) {
  for (const std::string& bytes :
       {std::string("hello"), std::string(100, '\0'), std::string(70000, 'x'),
        "SQLite format 3" + std::string(1, '\0') + std::string(5000, 'y')}) {
    DatabaseFolder folder;
    lab::WriteFile(folder.File(), bytes);
    EngineConnection connection(folder.File());
    EXPECT_FALSE(connection.IsOpen()) << bytes.size();
    EXPECT_FALSE(connection.Message().empty());
    EXPECT_EQ(lab::ReadFile(folder.File()), bytes);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "quillgate.dat-wal"));
  }
}

TEST(EngineFile, AReadOnlyFileIsRefused) {
  DatabaseFolder folder;
  { EngineConnection made(folder.File()); }
  const bool ran = WithPrivateMounts([&] {
    const char* const path = folder.Path().c_str();
    ASSERT_EQ(::mount(path, path, nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(::mount(nullptr, path, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr), 0);
    EngineConnection connection(folder.File());
    EXPECT_FALSE(connection.IsOpen());
    EXPECT_EQ(connection.Message(), "the file cannot be written: " + folder.File().native());
  });
  if (!ran) GTEST_SKIP() << "no right to a mount namespace";
}

TEST(EngineFile, ItsFilesAreTheOwnersAloneAlsoIfTheyWereNot) {
  DatabaseFolder folder;
  const mode_t before = ::umask(0);
  EngineConnection connection(folder.File());
  EXPECT_EQ(connection.Run("CREATE TABLE Settings (Key, Value)").code, 0);
  ::umask(before);
  EXPECT_EQ(connection.Run("BEGIN IMMEDIATE").code, 0);
  for (const char* suffix : {"", "-wal", "-shm"}) {
    const std::string file = folder.File().native() + suffix;
    EXPECT_EQ(ModeOf(file), 0600u) << file;
    std::filesystem::permissions(file, std::filesystem::perms(0664));
    EXPECT_TRUE(EngineConnection(folder.File()).IsOpen());
    EXPECT_EQ(ModeOf(file), 0600u) << file;
  }
  const std::string other = folder.StockSqlite("DELETE FROM Settings;");
  EXPECT_TRUE(other.ends_with("database is locked (5)")) << other << ": it has lost its locks";
}

TEST(EngineFile, CommitsReachTheDiskThroughAWriteAheadLog) {
  DatabaseFolder folder;
  EngineConnection connection(folder.File());
  EXPECT_EQ(connection.Run("PRAGMA journal_mode").Value(), "wal");
  EXPECT_EQ(connection.Run("PRAGMA synchronous").Value(), "2");
  EXPECT_EQ(connection.Run("PRAGMA busy_timeout").rows.at(0).at(0), "0");
}

TEST(EngineFile, BackslashesSeparateFolders) {
  DatabaseFolder folder;
  std::string path = folder.File().native();
  std::ranges::replace(path, '/', '\\');
  EngineConnection connection(path);
  EXPECT_TRUE(connection.IsOpen()) << connection.Message();
  EXPECT_TRUE(std::filesystem::exists(folder.File()));
}

TEST(EngineFile, AFileThatWasReplacedMustBeOpenedAgain) {
  DatabaseFolder folder;
  DatabaseFolder backup;
  ASSERT_EQ(EngineConnection(backup.File()).Run("CREATE TABLE FromBackup (a)").code, 0);
  EngineConnection connection(folder.File());
  ASSERT_EQ(connection.Run("CREATE TABLE Old (a)").code, 0);
  std::filesystem::rename(backup.File(), folder.File());
  std::filesystem::remove(folder.File().native() + "-wal");

  const EngineResult lost = connection.Run("INSERT INTO Old VALUES (1)");
  EXPECT_EQ(lost.code, kMisuse);
  EXPECT_EQ(lost.message, "the database file was moved or replaced");
  connection.Close();
  EngineConnection again(folder.File());
  ASSERT_TRUE(again.IsOpen()) << again.Message();
  EXPECT_EQ(again.Run("SELECT COUNT(*) FROM FromBackup").Value(), "0");
}

TEST(EngineFile, AFullDiskFailsTheStatementAndHarmsNothing) {
  DatabaseFolder folder;
  const bool ran = WithPrivateMounts([&] {
    const char* const path = folder.Path().c_str();
    ASSERT_EQ(::mount("small", path, "tmpfs", 0, "size=512k"), 0);
    EngineConnection connection(folder.File());
    ASSERT_EQ(connection.Run("CREATE TABLE Log (Text)").code, 0);
    int stored = 0;
    EngineResult latest;
    for (int row = 0; row < 1000 && (row == 0 || latest.code == 0); ++row) {
      latest = connection.Run("INSERT INTO Log VALUES ('" + std::string(4000, 'x') + "')");
      if (latest.code == 0) ++stored;
    }
    EXPECT_EQ(latest.code, kFull) << latest.message;
    EXPECT_EQ(latest.message, "database or disk is full");
    EXPECT_GT(stored, 10);
    EXPECT_EQ(connection.Run("SELECT COUNT(*) FROM Log").Value(), std::to_string(stored));
    EXPECT_EQ(connection.Run("PRAGMA integrity_check").Value(), "ok");
  });
  if (!ran) GTEST_SKIP() << "no right to a mount namespace";
}

// As callers do: a busy engine is asked again after a while.
bool RunPatiently(EngineConnection& connection, const std::string& sql) {
  int code = kBusy;
  for (int attempt = 0; attempt < 500 && code == kBusy; ++attempt) {
    code = connection.Run(sql).code;
    if (code == kBusy) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return code == 0;
}

TEST(EngineFile, ProcessesThatMakeAndFillItAtOnceLoseNoRow) {
  constexpr int kRows = 30;
  for (int round = 0; round < 2; ++round) {
    DatabaseFolder folder;
    std::vector<pid_t> processes;
    for (int process = 0; process < 3; ++process) {
      processes.push_back(::fork());
      if (processes.back() != 0) continue;
      EngineConnection connection(folder.File());
      bool wrote = RunPatiently(connection, "CREATE TABLE IF NOT EXISTS Log (Number)");
      for (int row = 0; row < kRows && wrote; ++row)
        wrote = RunPatiently(connection, "INSERT INTO Log VALUES (" + std::to_string(row) + ")");
      ::_exit(wrote ? 0 : 1);
    }
    for (const pid_t process : processes) {
      int status = -1;
      EXPECT_EQ(::waitpid(process, &status, 0), process);
      EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(folder.StockSqlite("PRAGMA integrity_check; SELECT COUNT(*) FROM Log;"), "ok\n90");
  }
}

}  // namespace

}  // namespace quillgate
