// The open connections of the process. A caller's handle is a number, never a pointer, so that a
// closed connection is recognized. Any thread.
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

  // Null when the handle is not that of an open connection.
  std::shared_ptr<Connection> Find(const void* handle);

  // Invalidates the handle. The connection closes when the statement still running on it has
  // finished.
  void Remove(const void* handle);

 private:
  std::mutex mutex_;
  std::uintptr_t latest_ = 0;  // numbers are never reused
  std::map<std::uintptr_t, std::shared_ptr<Connection>> connections_;
};

ConnectionTable& Connections();

}  // namespace quillgate::engine
