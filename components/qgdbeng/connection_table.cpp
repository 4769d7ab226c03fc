#include "connection_table.h"

namespace quillgate::engine {

void* ConnectionTable::Insert(std::shared_ptr<Connection> connection) {
  const std::lock_guard lock(mutex_);
  connections_.emplace(++latest_, std::move(connection));
  return reinterpret_cast<void*>(latest_);
}

std::shared_ptr<Connection> ConnectionTable::Find(const void* handle) {
  const std::lock_guard lock(mutex_);
  const auto found = connections_.find(reinterpret_cast<std::uintptr_t>(handle));
  return found == connections_.end() ? nullptr : found->second;
}

void ConnectionTable::Remove(const void* handle) {
  // Closed after the lock is released, since closing may take a while.
  std::shared_ptr<Connection> removed;
  const std::lock_guard lock(mutex_);
  const auto found = connections_.find(reinterpret_cast<std::uintptr_t>(handle));
  if (found == connections_.end()) return;
  removed = std::move(found->second);
  connections_.erase(found);
}

ConnectionTable& Connections() {
  static ConnectionTable table;
  return table;
}

}  // namespace quillgate::engine
