#include "statement_cache.h"

#include <algorithm>

namespace quillgate::engine {

sqlite3_stmt* StatementCache::Find(std::string_view sql) {
  const auto found = std::ranges::find(entries_, sql, &Entry::sql);
  if (found == entries_.end()) return nullptr;
  std::rotate(found, found + 1, entries_.end());
  return entries_.back().statement.get();
}

void StatementCache::Keep(std::string_view sql, StatementHandle statement) {
  if (entries_.size() == kCapacity) entries_.erase(entries_.begin());
  entries_.push_back({std::string(sql), std::move(statement)});
}

}  // namespace quillgate::engine
