#include "database_file.h"

#include "no_wait_vfs.h"

namespace quillgate::engine {

namespace {

// The suffixes of the file and of the files that SQLite reads and locks beside it: the rollback
// journal, the write-ahead log and the log's index.
constexpr const char* kSuffixes[] = {"", "-journal", "-wal", "-shm"};

// While opening, another process may be creating or recovering the same file, so opening waits for
// it. Statements do not wait: their callers retry.
constexpr int kOpenWaitMilliseconds = 2000;
constexpr int kOpenRetryMilliseconds = 10;

// In this order: the write-ahead log needs the file unlocked once. A full synchronisation makes
// each commit durable. Sorted intermediate results leave no files behind. The rest limits memory
// (in kibibytes) and the size of the log after a checkpoint (in bytes).
constexpr const char* kSettings[] = {
    "PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL",           "PRAGMA temp_store=MEMORY",
    "PRAGMA cache_size=-1024", "PRAGMA journal_size_limit=1048576",
};

// Retries while another process has the file locked: where waiting could deadlock, as when
// switching to the write-ahead log, SQLite returns busy without calling the busy handler.
void Run(sqlite3* database, const char* sql, const std::string& path) {
  int code = SQLITE_BUSY;
  for (int waited = 0; waited <= kOpenWaitMilliseconds; waited += kOpenRetryMilliseconds) {
    code = sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
    if (code == SQLITE_OK) return;
    if (code != SQLITE_BUSY && code != SQLITE_PROTOCOL) break;
    sqlite3_sleep(kOpenRetryMilliseconds);
  }
  Fail(sqlite3_errmsg(database), path);
}

}  // namespace

DatabaseHandle OpenDatabaseFile(const std::string& givenPath) {
  if (givenPath.empty()) throw OpenError("no file name given");
  const std::string path = FullPath(givenPath);
  MakeFile(path);
  for (const char* suffix : kSuffixes)
    KeepFromOthers(path + suffix);

  sqlite3* opened = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_PRIVATECACHE;
  const int code = sqlite3_open_v2(path.c_str(), &opened, flags, NoWaitVfs());
  DatabaseHandle database(opened);
  if (code != SQLITE_OK) Fail(opened != nullptr ? sqlite3_errmsg(opened) : "no memory", path);
  if (sqlite3_db_readonly(opened, "main") != 0) Fail("the file cannot be written", path);

  // Reads the file, and so refuses what is not a database before anything is written to it.
  Run(opened, "SELECT 1 FROM sqlite_master LIMIT 1", path);
  for (const char* setting : kSettings)
    Run(opened, setting, path);
  return database;
}

bool HasMoved(sqlite3* database) {
  int moved = 0;
  const int code = sqlite3_file_control(database, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return code == SQLITE_OK && moved != 0;
}

}  // namespace quillgate::engine
