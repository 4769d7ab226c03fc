// A server that sends data without end to the client that connected last.
#pragma once

#include <poll.h>
#include <sys/socket.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "lab/network_namespace.h"
#include "lab/socket_address.h"

namespace lab {

// Runs on a thread of its own.
class DownloadSource {
 public:
  static constexpr std::uint16_t kPort = 8080;

  // Listens at this address of the namespace.
  DownloadSource(const NetworkNamespace& network, int family, const std::string& address)
      : listener_(network.Socket(family, SOCK_STREAM | SOCK_NONBLOCK)) {
    const sockaddr_storage bound = SocketAddress(address, kPort);
    if (::bind(listener_.Get(), Plain(bound), sizeof bound) != 0) ThrowError("bind");
    if (::listen(listener_.Get(), 8) != 0) ThrowError("listen");
    thread_ = std::thread([this] { Serve(); });
  }
  ~DownloadSource() {
    stop_ = true;
    thread_.join();
  }
  DownloadSource(const DownloadSource&) = delete;
  DownloadSource& operator=(const DownloadSource&) = delete;

 private:
  void Serve() {
    const std::vector<char> data(256 * 1024, 'x');
    FileDescriptor client;
    while (!stop_) {
      pollfd polled[] = {{listener_.Get(), POLLIN, 0}, {client.Get(), POLLOUT, 0}};
      ::poll(polled, 2, 10);
      if (polled[0].revents != 0) {
        client = FileDescriptor(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK));
      } else if (polled[1].revents != 0 &&
                 ::send(client.Get(), data.data(), data.size(), MSG_NOSIGNAL) < 0 &&
                 errno != EAGAIN && errno != EPERM) {
        client.Reset();  // a send that a closed gate refused does not close the connection
      }
    }
  }

  FileDescriptor listener_;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

// Connects to the source and returns the socket; reading from it is the download. Throws when the
// source cannot be reached.
inline FileDescriptor ConnectToDownload(const NetworkNamespace& network, int family,
                                        const std::string& address) {
  FileDescriptor socket = network.Socket(family, SOCK_STREAM);
  const sockaddr_storage source = SocketAddress(address, DownloadSource::kPort);
  if (::connect(socket.Get(), Plain(source), sizeof source) != 0) ThrowError("connect");
  return socket;
}

}  // namespace lab
