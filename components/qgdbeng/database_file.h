// Opening the database file itself: what may be opened, how it is made, how it is kept.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>

#include "owned_file.h"

namespace quillgate::engine {

struct DatabaseCloser {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, DatabaseCloser>;

// Opens the file for reading and writing, or makes it, its owner's alone, when it is not there;
// throws OpenError. It has a write-ahead log (where the file system can share memory; else the
// rollback journal stays, as safe and slower), and every commit reaches the disk. Before anything
// is read, the file and those beside it are made their owner's alone; a link, what is no file, and
// what belongs to another user is refused. Statements on the connection do not wait for other
// processes.
DatabaseHandle OpenDatabaseFile(const std::string& path);

// Whether the file that was opened is not at its path any more. Windows lets nobody move or delete
// an open database file, so there it never is.
bool HasMoved(sqlite3* database);

}  // namespace quillgate::engine
