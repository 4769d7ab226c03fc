// Watches everything that may affect a closed gate: changes of its tables, by any process, and of
// the machine's links, addresses and routes. Owns the thread on which it reports them.
#pragma once

#include <functional>
#include <string>
#include <thread>

#include "netlink_socket.h"

namespace quillgate::gate {

class GateWatch {
 public:
  // `links` is true when links changed, false when only tables did. Returns false to be called
  // again after a while.
  using Tell = std::function<bool(bool links)>;

  // Watches the network namespace of the calling thread and the tables of that name, given without
  // the family. `notify` is called from the watch's own thread: once at the beginning, at once
  // after a change, and every now and then during a burst of changes. Throws std::system_error.
  GateWatch(std::string tableName, Tell notify);
  ~GateWatch();  // waits for a call that is running
  GateWatch(const GateWatch&) = delete;
  GateWatch& operator=(const GateWatch&) = delete;

 private:
  void Run() noexcept;
  bool Wait(int milliseconds);
  void Receive();

  std::string tableName_;
  Tell notify_;
  NetlinkSocket tables_;
  NetlinkSocket links_;
  bool tablesChanged_ = true;  // they may have changed before the watch began
  bool linksChanged_ = false;
  int stop_ = -1;  // an event descriptor
  std::thread thread_;
};

}  // namespace quillgate::gate
