// One netlink request to the kernel and its reply. For one use, by one thread.
#pragma once

#include <libmnl/libmnl.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quillgate::gate {

class NetlinkQuery {
 public:
  // `bus` is NETLINK_ROUTE or NETLINK_NETFILTER; `flags` are added to NLM_F_REQUEST.
  NetlinkQuery(int bus, std::uint16_t type, std::uint16_t flags);

  // The protocol's own header after the netlink header; zero at first. To be called once.
  template <class T>
  T& Header() {
    return *static_cast<T*>(mnl_nlmsg_put_extra_header(message_, sizeof(T)));
  }

  // Appends an attribute after the header.
  void Text(std::uint16_t type, const std::string& value) {
    mnl_attr_put_strz(message_, type, value.c_str());
  }

  // Sends the request and passes each message of the reply to `read`. Throws std::system_error with
  // the kernel's error number; messages read before the error are then to be discarded.
  void Run(const std::function<void(const nlmsghdr*)>& read);

 private:
  int bus_;
  std::vector<char> request_;
  nlmsghdr* message_;
};

}  // namespace quillgate::gate
