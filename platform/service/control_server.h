// The control socket of the service that this process runs. Answers root and the user that runs the
// process, nobody else. Several clients at once; one that says nothing is dropped after a while and
// keeps nobody waiting. Used on the dispatcher's thread alone.
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
  // Carries out one control and answers it.
  using Handler = std::function<ControlReply(DWORD control)>;

  ControlServer() = default;
  ~ControlServer() { Close(); }
  ControlServer(const ControlServer&) = delete;
  ControlServer& operator=(const ControlServer&) = delete;

  // Makes the socket; one that a dead process left is replaced. 0, or the error.
  DWORD Listen(std::wstring_view serviceName);
  // Drops every client and removes the socket.
  void Close();

  // What the dispatcher is to poll, appended; and for how long at most, -1 for ever.
  void AppendTo(std::vector<pollfd>& entries) const;
  int TimeoutMilliseconds() const;

  // Accepts, answers and drops whatever can be without waiting.
  void Serve(const Handler& handler);

 private:
  using Instant = std::chrono::steady_clock::time_point;
  struct Client {
    FileDescriptor connection;
    Instant deadline;
  };
  void Accept();
  // Whether the client is done with.
  static bool ServeClient(const Client& client, const Handler& handler);

  FileDescriptor listener_;
  std::string path_;
  std::vector<Client> clients_;
};

}  // namespace platform
