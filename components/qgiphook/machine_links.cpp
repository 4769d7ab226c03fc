#include "machine_links.h"

#include <libmnl/libmnl.h>
#include <linux/if.h>
#include <linux/rtnetlink.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <string_view>
#include <system_error>

#include "netlink_query.h"

namespace quillgate::gate {

namespace {

struct Link {
  std::string name;
  bool isUp = false;
};
using Links = std::map<unsigned, Link>;  // by index

std::size_t AddressBytes(int family) {
  return family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr);
}

struct Wanted {
  std::uint16_t type;
  const nlattr* found = nullptr;
};

int KeepWanted(const nlattr* attribute, void* context) {
  auto& wanted = *static_cast<Wanted*>(context);
  if (mnl_attr_get_type(attribute) == wanted.type) wanted.found = attribute;
  return MNL_CB_OK;
}

// Null when the message has no such attribute behind its header.
const nlattr* FindAttribute(const nlmsghdr* message, std::size_t headerBytes, std::uint16_t type) {
  Wanted wanted{type};
  mnl_attr_parse(message, static_cast<unsigned>(headerBytes), KeepWanted, &wanted);
  return wanted.found;
}

// Other names cannot be quoted in a rule, or would match several interfaces.
bool CanBeNamed(std::string_view name) {
  return name.find_first_of("\"*\\") == std::string_view::npos;
}

Links ReadLinks() {
  Links links;
  NetlinkQuery query(NETLINK_ROUTE, RTM_GETLINK, NLM_F_DUMP);
  query.Header<ifinfomsg>().ifi_family = AF_UNSPEC;
  query.Run([&links](const nlmsghdr* message) {
    const auto* link = static_cast<const ifinfomsg*>(mnl_nlmsg_get_payload(message));
    const nlattr* name = FindAttribute(message, sizeof *link, IFLA_IFNAME);
    if (name == nullptr || (link->ifi_flags & IFF_LOOPBACK) != 0) return;
    if (!CanBeNamed(mnl_attr_get_str(name))) return;
    links[static_cast<unsigned>(link->ifi_index)] = {mnl_attr_get_str(name),
                                                     (link->ifi_flags & IFF_UP) != 0};
  });
  return links;
}

void ReadPrefixes(int family, const Links& links, std::vector<LinkPrefix>& prefixes) {
  NetlinkQuery query(NETLINK_ROUTE, RTM_GETADDR, NLM_F_DUMP);
  query.Header<ifaddrmsg>().ifa_family = static_cast<unsigned char>(family);
  query.Run([&](const nlmsghdr* message) {
    const auto* entry = static_cast<const ifaddrmsg*>(mnl_nlmsg_get_payload(message));
    const auto link = links.find(entry->ifa_index);
    // A subnet of an interface that is down cannot be reached.
    if (entry->ifa_family != family || link == links.end() || !link->second.isUp) return;
    // IFA_ADDRESS is the other end's address on a point-to-point link, else the machine's.
    const nlattr* address = FindAttribute(message, sizeof *entry, IFA_ADDRESS);
    if (address == nullptr || mnl_attr_get_payload_len(address) != AddressBytes(family)) return;
    prefixes.push_back({link->second.name,
                        MakePrefix(family, mnl_attr_get_payload(address), entry->ifa_prefixlen)});
  });
}

void KeepGateway(int family, const nlattr* attribute, std::vector<NetworkPrefix>& gateways) {
  const auto bytes = static_cast<unsigned>(AddressBytes(family));
  if (attribute == nullptr || mnl_attr_get_payload_len(attribute) != bytes) return;
  gateways.push_back(MakePrefix(family, mnl_attr_get_payload(attribute), bytes * 8));
}

// A multipath route has a list of paths, each with its own gateway.
void KeepPaths(int family, const nlattr* paths, std::vector<NetworkPrefix>& gateways) {
  auto* hop = static_cast<rtnexthop*>(mnl_attr_get_payload(paths));
  int left = mnl_attr_get_payload_len(paths);
  for (; RTNH_OK(hop, left); left -= RTNH_ALIGN(hop->rtnh_len), hop = RTNH_NEXT(hop)) {
    Wanted wanted{RTA_GATEWAY};
    mnl_attr_parse_payload(RTNH_DATA(hop), hop->rtnh_len - sizeof *hop, KeepWanted, &wanted);
    KeepGateway(family, wanted.found, gateways);
  }
}

void ReadGateways(int family, std::vector<NetworkPrefix>& gateways) {
  NetlinkQuery query(NETLINK_ROUTE, RTM_GETROUTE, NLM_F_DUMP);
  query.Header<rtmsg>().rtm_family = static_cast<unsigned char>(family);
  query.Run([&](const nlmsghdr* message) {
    const auto* route = static_cast<const rtmsg*>(mnl_nlmsg_get_payload(message));
    if (route->rtm_family != family) return;
    KeepGateway(family, FindAttribute(message, sizeof *route, RTA_GATEWAY), gateways);
    const nlattr* paths = FindAttribute(message, sizeof *route, RTA_MULTIPATH);
    if (paths != nullptr) KeepPaths(family, paths, gateways);
  });
}

template <class T>
void OrderOnce(std::vector<T>& values) {
  std::ranges::sort(values);
  values.erase(std::ranges::unique(values).begin(), values.end());
}

MachineLinks ReadOnce() {
  const Links links = ReadLinks();
  MachineLinks result;
  for (const auto& [index, link] : links)
    result.interfaces.push_back(link.name);
  for (const int family : {AF_INET, AF_INET6}) {
    ReadPrefixes(family, links, result.prefixes);
    ReadGateways(family, result.gateways);
  }
  OrderOnce(result.interfaces);
  OrderOnce(result.prefixes);
  OrderOnce(result.gateways);
  return result;
}

}  // namespace

MachineLinks ReadMachineLinks() {
  // The kernel reports with EINTR that something changed during the dump.
  constexpr int kAttempts = 5;
  for (int attempt = 1;; ++attempt) {
    try {
      return ReadOnce();
    } catch (const std::system_error& failure) {
      if (failure.code().value() != EINTR || attempt == kAttempts) throw;
    }
  }
}

}  // namespace quillgate::gate
