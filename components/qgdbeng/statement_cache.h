// The compiled statements of one connection: compiling costs more than running for the short
// statements that are run again and again. Used under the connection's lock; emptied before the
// connection closes.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillgate::engine {

struct StatementCloser {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, StatementCloser>;

class StatementCache {
 public:
  // The compiled statement of this very text, which stays the cache's; null when it is not there.
  sqlite3_stmt* Find(std::string_view sql);

  // Keeps a statement for the next time; the one unused for longest goes when there are too many.
  void Keep(std::string_view sql, StatementHandle statement);

 private:
  struct Entry {
    std::string sql;
    StatementHandle statement;
  };
  static constexpr std::size_t kCapacity = 16;
  std::vector<Entry> entries_;  // the one used last is last
};

}  // namespace quillgate::engine
