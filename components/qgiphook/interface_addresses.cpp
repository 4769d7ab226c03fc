#include "interface_addresses.h"

#include <libmnl/libmnl.h>
#include <linux/if.h>
#include <linux/rtnetlink.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <set>
#include <system_error>

#include "netlink_query.h"

namespace quillgate::gate {

namespace {

// Interfaces that are down lead nowhere, and the loopback interface is judged by its name.
std::set<unsigned> UsableInterfaces() {
  std::set<unsigned> usable;
  NetlinkQuery query(NETLINK_ROUTE, RTM_GETLINK, NLM_F_DUMP);
  query.Header<rtgenmsg>().rtgen_family = AF_UNSPEC;
  query.Run([&usable](const nlmsghdr* message) {
    const auto* link = static_cast<const ifinfomsg*>(mnl_nlmsg_get_payload(message));
    const bool isUsable = (link->ifi_flags & IFF_UP) != 0 && (link->ifi_flags & IFF_LOOPBACK) == 0;
    if (isUsable) usable.insert(static_cast<unsigned>(link->ifi_index));
  });
  return usable;
}

int KeepAddress(const nlattr* attribute, void* found) {
  // The prefix's own address: the other end's where there is one, else the machine's.
  if (mnl_attr_get_type(attribute) == IFA_ADDRESS) *static_cast<const nlattr**>(found) = attribute;
  return MNL_CB_OK;
}

std::vector<NetworkPrefix> ReadPrefixes(int family) {
  const std::set<unsigned> usable = UsableInterfaces();
  const std::size_t addressBytes = family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr);
  std::vector<NetworkPrefix> prefixes;
  NetlinkQuery query(NETLINK_ROUTE, RTM_GETADDR, NLM_F_DUMP);
  query.Header<ifaddrmsg>().ifa_family = static_cast<unsigned char>(family);
  query.Run([&](const nlmsghdr* message) {
    const auto* entry = static_cast<const ifaddrmsg*>(mnl_nlmsg_get_payload(message));
    if (entry->ifa_family != family || !usable.contains(entry->ifa_index)) return;
    const nlattr* address = nullptr;
    mnl_attr_parse(message, sizeof *entry, KeepAddress, &address);
    if (address == nullptr || mnl_attr_get_payload_len(address) != addressBytes) return;
    prefixes.push_back(MakePrefix(family, mnl_attr_get_payload(address), entry->ifa_prefixlen));
  });
  return prefixes;
}

}  // namespace

std::vector<NetworkPrefix> ConnectedPrefixes(int family) {
  // The kernel tells when the addresses changed while they were being read.
  constexpr int kAttempts = 5;
  for (int attempt = 1;; ++attempt) {
    try {
      return ReadPrefixes(family);
    } catch (const std::system_error& failure) {
      if (failure.code().value() != EINTR || attempt == kAttempts) throw;
    }
  }
}

}  // namespace quillgate::gate
