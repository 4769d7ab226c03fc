// The address of a service's control socket. The path may be too long for a socket address, so the
// address names the folder by its descriptor ("/proc/self/fd/N"). The object holds the descriptor
// and must live until the address has been used.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <string_view>

#include "platform/kernel/file_descriptor.h"

namespace platform {

class ControlSocketAddress {
 public:
  explicit ControlSocketAddress(std::wstring_view serviceName);

  bool IsValid() const { return folder_.IsOpen(); }
  const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&address_); }
  static socklen_t Size() { return sizeof(sockaddr_un); }

 private:
  FileDescriptor folder_;
  sockaddr_un address_{};
};

}  // namespace platform
