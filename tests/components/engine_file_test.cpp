// What the engine library opens, what it refuses, and what it does to files and disks.
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>

#include "components/database_folder.h"
#include "components/engine_library.h"

namespace quillgate {

namespace {

constexpr int kFull = 13;
constexpr int kMisuse = 21;
constexpr const char* kNoMounts = "no right to a mount namespace";

unsigned ModeOf(const std::filesystem::path& file) {
  struct stat status {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
  return status.st_mode & 0777;
}

TEST(EngineFile, WhatIsNoFileInThePlaceOfOneIsRefused) {
  for (const std::string suffix : {"", "-wal", "-shm"}) {
    DatabaseFolder folder;
    const std::string file = folder.File().native() + suffix;
    std::filesystem::create_symlink("elsewhere", file);
    EXPECT_EQ(EngineConnection(folder.File()).Message(), "it is a link: " + file);
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(EngineConnection(folder.File()).Message(), "it is a folder: " + file);
  }
}

TEST(EngineFile, AFolderThatIsMissingIsRefused) {
  DatabaseFolder folder;
  EngineConnection connection(folder.Path() / "missing" / "quillgate.dat");
  EXPECT_FALSE(connection.IsOpen());
  EXPECT_TRUE(connection.Message().starts_with("No such file or directory"))
      << connection.Message();
}

TEST(EngineFile, WhatIsNoDatabaseIsRefusedAndStaysAsItIs) {
  for (const std::string& bytes :
       {std::string("hello"), std::string(100, '\0'), std::string(70000, 'x'),
        "SQLite format 3" + std::string(1, '\0') + std::string(5000, 'y')}) {
    DatabaseFolder folder;
    WriteFile(folder.File(), bytes);
    EngineConnection connection(folder.File());
    EXPECT_FALSE(connection.IsOpen()) << bytes.size();
    EXPECT_FALSE(connection.Message().empty());
    EXPECT_EQ(ReadFile(folder.File()), bytes);
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
  if (!ran) GTEST_SKIP() << kNoMounts;
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
  const std::string other = StockSqlite(folder.File(), "DELETE FROM Settings");
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
  {
    EngineConnection other(backup.File());
    ASSERT_EQ(other.Run("CREATE TABLE FromBackup (a)").code, 0);
  }
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
  if (!ran) GTEST_SKIP() << kNoMounts;
}

}  // namespace

}  // namespace quillgate
