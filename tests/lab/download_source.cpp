#include "lab/download_source.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <system_error>

#include "lab/socket_address.h"

namespace lab {

namespace {

constexpr std::chrono::milliseconds kTurn{10};
constexpr std::uint64_t kTurnsPerSecond = 100;
constexpr std::size_t kMostBytes = 256 * 1024;

[[noreturn]] void ThrowError(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

FileDescriptor Listen(int family, const std::string& address) {
  FileDescriptor listener(::socket(family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  const int on = 1;
  ::setsockopt(listener.Get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  const sockaddr_storage bound = SocketAddress(family, address, DownloadSource::kPort);
  if (::bind(listener.Get(), Plain(bound), sizeof bound) != 0) ThrowError("bind");
  if (::listen(listener.Get(), 8) != 0) ThrowError("listen");
  return listener;
}

}  // namespace

DownloadSource::DownloadSource(const NetworkNamespace& place, int family,
                               const std::string& address, std::uint64_t bytesPerSecond)
    : bytesPerTurn_(bytesPerSecond / kTurnsPerSecond) {
  place.Run([&] { listener_ = Listen(family, address); });
  thread_ = std::thread([this] { Serve(); });
}

DownloadSource::~DownloadSource() {
  stop_ = true;
  thread_.join();
}

void DownloadSource::Serve() {
  while (!stop_) {
    AcceptClients();
    SendToClients();
    std::vector<pollfd> waiting{{listener_.Get(), POLLIN, 0}};
    // With a limit there is room always; what makes the next turn come is the time.
    if (bytesPerTurn_ == 0) {
      for (const FileDescriptor& client : clients_)
        waiting.push_back({client.Get(), POLLOUT, 0});
    }
    ::poll(waiting.data(), waiting.size(), static_cast<int>(kTurn.count()));
  }
}

void DownloadSource::AcceptClients() {
  for (;;) {
    FileDescriptor client(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK));
    if (!client.IsValid()) return;
    const std::string head = "HTTP/1.0 200 OK\r\n\r\n";
    ::send(client.Get(), head.data(), head.size(), MSG_NOSIGNAL);
    clients_.push_back(std::move(client));
  }
}

void DownloadSource::SendToClients() {
  static const std::vector<char> data(kMostBytes, 'x');
  const std::size_t most =
      bytesPerTurn_ == 0 ? kMostBytes : std::min<std::size_t>(kMostBytes, bytesPerTurn_);
  std::erase_if(clients_, [&](const FileDescriptor& client) {
    const ssize_t bytes = ::send(client.Get(), data.data(), most, MSG_NOSIGNAL);
    if (bytes > 0) sent_ += static_cast<std::uint64_t>(bytes);
    // A closed gate's refusal is no reason to give the client up.
    return bytes < 0 && errno != EAGAIN && errno != EPERM;
  });
}

FileDescriptor ConnectToDownload(const NetworkNamespace& place, int family,
                                 const std::string& address) {
  FileDescriptor socket;
  place.Run([&] {
    socket = FileDescriptor(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_storage source = SocketAddress(family, address, DownloadSource::kPort);
    if (::connect(socket.Get(), Plain(source), sizeof source) != 0) ThrowError("connect");
  });
  return socket;
}

}  // namespace lab
