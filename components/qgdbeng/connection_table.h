// The open connections of the process. What a caller holds is a number, never a pointer, so that a
// connection that was closed is told from an open one. Any thread.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "connection.h"

namespace quillgate::engine {

class ConnectionTable {
 public:
  void* Insert(std::shared_ptr<Connection> connection);

  // Null when the handle is not one of an open connection.
  std::shared_ptr<Connection> Find(const void* handle);

  // The connection closes when the statement that still runs on it has ended.
  void Remove(const void* handle);

 private:
  std::mutex mutex_;
  std::uintptr_t latest_ = 0;  // numbers are never used twice
  std::map<std::uintptr_t, std::shared_ptr<Connection>> connections_;
};

ConnectionTable& Connections();

}  // namespace quillgate::engine
