// The control socket of the service that this process runs. Accepts clients of root and of the
// process's user only. Serves several clients at once without blocking; a client that sends nothing
// is dropped after five seconds. Used on the dispatcher's thread alone.
#pragma once

#include <poll.h>

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/kernel/file_descriptor.h"
#include "platform/service/control_message.h"

namespace platform {

class ControlServer {
 public:
  // Handles one control and returns the reply.
  using Handler = std::function<ControlReply(DWORD control)>;

  ControlServer() = default;
  ~ControlServer() { Close(); }
  ControlServer(const ControlServer&) = delete;
  ControlServer& operator=(const ControlServer&) = delete;

  // Creates the socket, and replaces one that a dead process left. 0, or the error.
  DWORD Listen(std::wstring_view serviceName);
  // Drops every client and removes the socket.
  void Close();

  // Appends the descriptors that the dispatcher polls.
  void AppendTo(std::vector<pollfd>& entries) const;
  // The timeout for that poll; -1: none.
  int TimeoutMilliseconds() const;

  // Accepts, serves and drops clients without waiting.
  void Serve(const Handler& handler);

 private:
  using Instant = std::chrono::steady_clock::time_point;
  struct Client {
    FileDescriptor connection;
    Instant deadline;
  };
  void Accept();
  // True when the client is to be dropped: it was served, is closed or has timed out.
  static bool ServeClient(const Client& client, const Handler& handler);

  FileDescriptor listener_;
  std::string path_;
  std::vector<Client> clients_;
};

}  // namespace platform
