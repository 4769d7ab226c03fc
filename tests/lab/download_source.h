// Something to download: a server that sends without end to everybody who connects, after the head
// of an HTTP answer, so that any client can fetch from it. Serves on a thread of its own.
#pragma once

#include <sys/socket.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "lab/file_descriptor.h"
#include "lab/network_namespace.h"

namespace lab {

class DownloadSource {
 public:
  // At that address of the namespace, port 8080. `bytesPerSecond` is for each client; 0 means as
  // fast as it goes.
  DownloadSource(const NetworkNamespace& place, int family, const std::string& address,
                 std::uint64_t bytesPerSecond = 0);
  ~DownloadSource();
  DownloadSource(const DownloadSource&) = delete;
  DownloadSource& operator=(const DownloadSource&) = delete;

  static constexpr std::uint16_t kPort = 8080;

  // What was handed to the network so far, for all clients together.
  std::uint64_t BytesSent() const { return sent_; }

 private:
  void Serve();
  void AcceptClients();
  void SendToClients();

  FileDescriptor listener_;
  std::vector<FileDescriptor> clients_;
  std::uint64_t bytesPerTurn_;
  std::atomic<std::uint64_t> sent_{0};
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

// Connects to a download source from a namespace; throws when that fails. Reading from it is the
// download.
FileDescriptor ConnectToDownload(const NetworkNamespace& place, int family,
                                 const std::string& address);

}  // namespace lab
