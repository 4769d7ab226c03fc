// The address of a socket in the file system (unix(7)). A value.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <string_view>

namespace platform {

class SocketAddress {
 public:
  explicit SocketAddress(std::string_view path) : isValid_(path.size() < sizeof address_.sun_path) {
    address_.sun_family = AF_UNIX;
    if (isValid_) std::ranges::copy(path, address_.sun_path);
  }

  // False when the path is too long for an address, which then names no socket.
  bool IsValid() const { return isValid_; }
  const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&address_); }
  static socklen_t Size() { return sizeof(sockaddr_un); }

 private:
  sockaddr_un address_{};
  bool isValid_;
};

}  // namespace platform
