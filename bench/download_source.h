// Something to download: a server that sends without end to whoever connected last.
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

// Serves on a thread of its own.
class DownloadSource {
 public:
  static constexpr std::uint16_t kPort = 8080;

  // At that address of the namespace.
  DownloadSource(const NetworkNamespace& place, int family, const std::string& address)
      : listener_(place.Socket(family, SOCK_STREAM | SOCK_NONBLOCK)) {
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
      pollfd waiting[] = {{listener_.Get(), POLLIN, 0}, {client.Get(), POLLOUT, 0}};
      ::poll(waiting, 2, 10);
      if (waiting[0].revents != 0) {
        client = FileDescriptor(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK));
      } else if (waiting[1].revents != 0 &&
                 ::send(client.Get(), data.data(), data.size(), MSG_NOSIGNAL) < 0 &&
                 errno != EAGAIN && errno != EPERM) {
        client.Reset();  // a closed gate's refusal is no reason to give the client up
      }
    }
  }

  FileDescriptor listener_;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

// Throws when the source cannot be reached. Reading from the socket is the download.
inline FileDescriptor ConnectToDownload(const NetworkNamespace& place, int family,
                                        const std::string& address) {
  FileDescriptor socket = place.Socket(family, SOCK_STREAM);
  const sockaddr_storage source = SocketAddress(address, DownloadSource::kPort);
  if (::connect(socket.Get(), Plain(source), sizeof source) != 0) ThrowError("connect");
  return socket;
}

}  // namespace lab
