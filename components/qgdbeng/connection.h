// One open database. Any thread: statements are serialized by a mutex.
#pragma once

#include <mutex>
#include <string>
#include <string_view>

#include "database_file.h"
#include "result_table.h"
#include "statement_cache.h"

namespace quillgate::engine {

// The dimensions of a result; its values are in the table builder.
struct ResultShape {
  int rows = 0;
  int columns = 0;
};

class Connection {
 public:
  // Throws OpenError.
  explicit Connection(const std::string& path) : database_(OpenDatabaseFile(path)) {}

  // Runs one statement. Returns its result code; `message` is the reason when the code is not 0.
  int Run(std::string_view sql, TableBuilder& table, ResultShape& shape, std::string& message);

  int LatestCode();
  int ChangedRows();
  bool InTransaction();

 private:
  int Execute(std::string_view sql, TableBuilder& table, ResultShape& shape, std::string& message);
  int Compile(std::string_view sql, StatementHandle& statement, std::string& message);
  int Failure(int code, std::string& message);

  std::mutex mutex_;
  DatabaseHandle database_;
  StatementCache cache_;  // declared last: statements are finalized first
  int latestCode_ = SQLITE_OK;
};

}  // namespace quillgate::engine
