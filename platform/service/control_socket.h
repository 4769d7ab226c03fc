// The address of a service's control socket. It may be longer than a socket address can be, so the
// folder goes by its descriptor, which must stay open until the address has been used.
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
