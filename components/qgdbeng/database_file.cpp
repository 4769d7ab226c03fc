#include "database_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "no_wait_vfs.h"

namespace quillgate::engine {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

// The file, and what SQLite reads and locks beside it: its logs, and the index of the later one.
constexpr const char* kSuffixes[] = {"", "-journal", "-wal", "-shm"};

// While opening, another process may be making the same file or recovering it: wait for that. The
// statements afterwards do not wait; their caller has a way of its own of trying again.
constexpr int kOpenWaitMilliseconds = 2000;
constexpr int kOpenRetryMilliseconds = 10;

// In order: the log needs the file unlocked once; a full synchronisation makes each commit last;
// sorted intermediate results leave no files behind; the rest bounds memory (kibibytes) and the
// size of the log after it was written back (bytes).
constexpr const char* kSettings[] = {
    "PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL",           "PRAGMA temp_store=MEMORY",
    "PRAGMA cache_size=-1024", "PRAGMA journal_size_limit=1048576",
};

[[noreturn]] void Fail(const std::string& reason, const std::string& path) {
  throw OpenError(reason + ": " + path);
}

// An absolute path: a name with a special meaning for SQLite is then a plain file name too.
std::string FullPath(std::string path) {
  std::ranges::replace(path, '\\', '/');
  if (path.empty()) throw OpenError("no file name given");
  std::error_code error;
  const std::filesystem::path full = std::filesystem::absolute(path, error);
  if (error) Fail(error.message(), path);
  return full.native();
}

// Makes the file, if it is missing, before SQLite can make it readable for others. The descriptor
// of a file that exists is never opened and closed here: that would drop the locks that another
// connection of this process has on it.
void MakeFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
  if (file >= 0) {
    ::close(file);
  } else if (errno != EEXIST) {
    Fail(std::strerror(errno), path);
  }
}

void RefuseWhatIsNoFile(const std::string& path, const struct stat& status) {
  if (S_ISLNK(status.st_mode)) Fail("it is a link", path);
  if (S_ISDIR(status.st_mode)) Fail("it is a folder", path);
  if (!S_ISREG(status.st_mode)) Fail("it is not a file", path);
}

// The digests of passwords are in these files, and a lock on any of them, for which reading is
// enough, holds up whoever writes. One that came from elsewhere, such as a copy put back, may be
// open to others; whoever has opened it before this has it open still. By path alone: closing a
// descriptor of a file drops the locks that other connections of this process have on it.
void KeepFromOthers(const std::string& path) {
  struct stat status {};
  int result = ::lstat(path.c_str(), &status);
  if (result == 0) {
    RefuseWhatIsNoFile(path, status);
    if (status.st_uid != ::geteuid()) Fail("it belongs to another user", path);
    if ((status.st_mode & ALLPERMS) == kOwnerOnly) return;
    result = ::fchmodat(AT_FDCWD, path.c_str(), kOwnerOnly, AT_SYMLINK_NOFOLLOW);
  }
  // One that is not there, or no longer, will be made with the mode of the database file.
  if (result != 0 && errno != ENOENT) Fail(std::strerror(errno), path);
}

// Tries again while another process has the file: where waiting might be a deadlock, as on the way
// to the write-ahead log, SQLite answers busy without asking the busy handler.
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

  // Reads the file, and so finds out what is no database, before anything is written to it.
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
