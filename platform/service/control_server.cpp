#include "platform/service/control_server.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>

#include "platform/kernel/log.h"
#include "platform/kernel/system_error.h"
#include "platform/service/control_socket.h"
#include "platform/service/service_files.h"

namespace platform {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds kSilenceLimit{5};
constexpr std::size_t kMaxClients = 32;
constexpr int kBacklog = 16;

bool IsTrusted(int connection) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         (peer.uid == 0 || peer.uid == ::geteuid());
}

void Send(int connection, const ControlReply& reply) {
  // A client that has closed its end or does not read misses its reply; nothing else is affected.
  [[maybe_unused]] const ssize_t sent =
      ::send(connection, &reply, sizeof reply, MSG_NOSIGNAL | MSG_DONTWAIT);
}

bool IsValid(const ControlRequest& request, ssize_t bytes) {
  return bytes == sizeof request && request.magic == kControlMagic &&
         request.version == kControlVersion;
}

}  // namespace

DWORD ControlServer::Listen(std::wstring_view serviceName) {
  const std::string path = ServiceFilePath(serviceName, ServiceFile::kSocket).native();
  const ControlSocketAddress address(serviceName);
  FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (!address.IsValid() || !socket.IsOpen()) return ErrorFromErrno(errno);
  ::unlink(path.c_str());
  // The file gets its mode from the socket, so other users cannot open it at any moment.
  if (::fchmod(socket.Get(), 0600) != 0 ||
      ::bind(socket.Get(), address.Get(), ControlSocketAddress::Size()) != 0 ||
      ::listen(socket.Get(), kBacklog) != 0) {
    return ErrorFromErrno(errno);
  }
  path_ = path;
  listener_ = std::move(socket);
  return NO_ERROR;
}

void ControlServer::Close() {
  if (!path_.empty()) ::unlink(path_.c_str());
  path_.clear();
  listener_.Reset();
  clients_.clear();
}

void ControlServer::AppendTo(std::vector<pollfd>& entries) const {
  // With too many clients, further ones wait until one is dropped.
  if (clients_.size() < kMaxClients) entries.push_back({listener_.Get(), POLLIN, 0});
  for (const Client& client : clients_)
    entries.push_back({client.connection.Get(), POLLIN, 0});
}

int ControlServer::TimeoutMilliseconds() const {
  if (clients_.empty()) return -1;
  const auto next = std::ranges::min_element(clients_, {}, &Client::deadline)->deadline;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - steady_clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

void ControlServer::Serve(const Handler& handler) {
  Accept();
  std::erase_if(clients_,
                [&handler](const Client& client) { return ServeClient(client, handler); });
}

void ControlServer::Accept() {
  while (clients_.size() < kMaxClients) {
    FileDescriptor connection(
        ::accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!connection.IsOpen()) return;
    if (IsTrusted(connection.Get())) {
      clients_.push_back({std::move(connection), steady_clock::now() + kSilenceLimit});
    } else {
      LogLine("a control of the service from a user without the right was dropped");
    }
  }
}

bool ControlServer::ServeClient(const Client& client, const Handler& handler) {
  ControlRequest request;
  const ssize_t bytes =
      ::recv(client.connection.Get(), &request, sizeof request, MSG_TRUNC | MSG_DONTWAIT);
  if (bytes < 0) {
    const bool silent = errno == EAGAIN || errno == EINTR;
    return !silent || steady_clock::now() >= client.deadline;
  }
  if (bytes == 0) return true;
  if (IsValid(request, bytes)) {
    Send(client.connection.Get(), handler(request.control));
  } else {
    ControlReply refusal;
    refusal.error = ERROR_INVALID_DATA;
    Send(client.connection.Get(), refusal);
  }
  return true;
}

}  // namespace platform
