// The address of a service's control socket. The path may be too long for a socket address, so the
// address names the folder by its descriptor ("/proc/self/fd/N"). The object holds the descriptor
// and must live until the address has been used.
#pragma once

#include <string_view>

#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_socket_address.h"

namespace platform {

class ControlSocketAddress {
 public:
  explicit ControlSocketAddress(std::wstring_view serviceName);

  bool IsValid() const { return folder_.IsOpen() && address_.IsValid(); }
  const sockaddr* Get() const { return address_.Get(); }
  static socklen_t Size() { return SocketAddress::Size(); }

 private:
  FileDescriptor folder_;
  SocketAddress address_;
};

}  // namespace platform
