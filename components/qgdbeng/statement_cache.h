// The compiled statements of one connection. Short statements that run again and again take longer
// to compile than to run. Used under the connection's lock; destroyed before the connection closes.
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
  // Returns the compiled statement of exactly this text; null when it is not cached. The cache
  // keeps the ownership.
  sqlite3_stmt* Find(std::string_view sql);

  // Adds a statement. When the cache is full, the least recently used one is destroyed.
  void Keep(std::string_view sql, StatementHandle statement);

 private:
  struct Entry {
    std::string sql;
    StatementHandle statement;
  };
  static constexpr std::size_t kCapacity = 16;
  std::vector<Entry> entries_;  // the most recently used last
};

}  // namespace quillgate::engine
