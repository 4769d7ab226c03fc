// Receives of everything that may have to do with a closed gate: changes of its tables, whoever
// makes them, and of the machine's links, addresses and routes. Owns the thread on which it tells
// so.
#pragma once

#include <functional>
#include <string>
#include <thread>

#include "netlink_socket.h"

namespace quillgate::gate {

class GateWatch {
 public:
  // What changed; answers false to be told once more after a while.
  using Tell = std::function<bool(bool links)>;

  // In the network namespace of the calling thread, for tables of that name, without the family.
  // `tell` is called once at the beginning, at once after a change, and for a burst of changes
  // every now and then, from the watch's own thread. Throws std::system_error.
  GateWatch(std::string tableName, Tell tell);
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
  bool tablesChanged_ = true;  // before the watch began, for all that it knows
  bool linksChanged_ = false;
  int stop_ = -1;  // an event descriptor
  std::thread thread_;
};

}  // namespace quillgate::gate
