#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>

#include "platform/kernel/system_error.h"
#include "platform/service/control_message.h"
#include "platform/service/control_socket.h"

namespace platform {
namespace {

constexpr timeval kTimeout{.tv_sec = 30, .tv_usec = 0};

// The error of ControlService for a failed exchange.
DWORD ErrorOfExchange(int error) {
  switch (error) {
    case ENOENT:
    case ECONNREFUSED:
      return ERROR_SERVICE_NOT_ACTIVE;
    case EACCES:
    case EPERM:
      return ERROR_ACCESS_DENIED;
    default:
      return ERROR_SERVICE_REQUEST_TIMEOUT;
  }
}

DWORD Connect(std::wstring_view name, FileDescriptor& connection) {
  const ControlSocketAddress address(name);
  if (!address.IsValid()) return ERROR_SERVICE_NOT_ACTIVE;
  connection.Reset(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  if (!connection.IsOpen()) return ErrorFromErrno(errno);
  // The timeouts also limit connect, which waits when the server's backlog is full.
  ::setsockopt(connection.Get(), SOL_SOCKET, SO_SNDTIMEO, &kTimeout, sizeof kTimeout);
  ::setsockopt(connection.Get(), SOL_SOCKET, SO_RCVTIMEO, &kTimeout, sizeof kTimeout);
  const bool connected =
      ::connect(connection.Get(), address.Get(), ControlSocketAddress::Size()) == 0;
  return connected ? NO_ERROR : ErrorOfExchange(errno);
}

DWORD Receive(int connection, ControlReply& reply) {
  ControlReply received;
  ssize_t bytes = -1;
  do {
    bytes = ::recv(connection, &received, sizeof received, MSG_TRUNC);
  } while (bytes < 0 && errno == EINTR);
  if (bytes < 0) return ErrorOfExchange(errno);
  const bool valid = bytes == sizeof received && received.magic == kControlMagic &&
                     received.version == kControlVersion;
  // Closed without a reply: the process has died, or it rejects this user.
  if (!valid) return ERROR_SERVICE_REQUEST_TIMEOUT;
  reply = received;
  return NO_ERROR;
}

}  // namespace

DWORD SendControl(std::wstring_view name, DWORD control, ControlReply& reply) {
  FileDescriptor connection;
  const DWORD error = Connect(name, connection);
  if (error != NO_ERROR) return error;
  ControlRequest request;
  request.control = control;
  if (::send(connection.Get(), &request, sizeof request, MSG_NOSIGNAL) != sizeof request) {
    return ErrorOfExchange(errno);
  }
  return Receive(connection.Get(), reply);
}

}  // namespace platform
