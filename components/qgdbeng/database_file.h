// Opens the database file: which files are accepted, how a new one is created, and its settings.
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

// Opens the file for reading and writing. A missing file is created, accessible to its owner only.
// Throws OpenError. The file has a write-ahead log; where the file system cannot share memory, it
// keeps the rollback journal, which is as safe and slower. Every commit reaches the disk. Before
// anything is read, the file and those beside it are restricted to their owner; links, whatever is
// not a regular file, and files of another user are refused. Statements on the connection do not
// wait for other processes.
DatabaseHandle OpenDatabaseFile(const std::string& path);

// Whether the open file was moved, deleted or replaced. Always false on Windows, where an open
// database file cannot be moved or deleted.
bool HasMoved(sqlite3* database);

}  // namespace quillgate::engine
