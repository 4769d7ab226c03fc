#include "platform/net/linux_links.h"

#include <arpa/inet.h>
#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/if_arp.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <string>

#include "platform/kernel/encoding.h"

namespace platform {
namespace {

template <class Header>
const Header& HeaderOf(const nlmsghdr& message) {
  return *static_cast<const Header*>(::mnl_nlmsg_get_payload(&message));
}

std::string TextOf(const nlattr* attribute) {
  return attribute == nullptr ? std::string() : std::string(::mnl_attr_get_str(attribute));
}

std::uint32_t NumberOf(const nlattr* attribute, std::uint32_t missing) {
  return attribute == nullptr ? missing : ::mnl_attr_get_u32(attribute);
}

std::string AddressText(const void* address) {
  std::array<char, INET_ADDRSTRLEN> text{};
  ::inet_ntop(AF_INET, address, text.data(), text.size());
  return text.data();
}

std::string MaskText(unsigned prefixBits) {
  const std::uint32_t mask = prefixBits == 0 ? 0 : ~std::uint32_t{0} << (32 - prefixBits);
  const in_addr network{htonl(mask)};
  return AddressText(&network);
}

// Interface types of MIB_IFROW.
constexpr std::uint32_t kOther = 1;
constexpr std::uint32_t kEthernet = 6;
constexpr std::uint32_t kPpp = 23;
constexpr std::uint32_t kLoopback = 24;
constexpr std::uint32_t kTunnel = 131;

std::uint32_t TypeOf(const ifinfomsg& header) {
  if ((header.ifi_flags & IFF_LOOPBACK) != 0) return kLoopback;
  switch (header.ifi_type) {
    case ARPHRD_ETHER:
      return kEthernet;
    case ARPHRD_PPP:
      return kPpp;
    case ARPHRD_NONE:
    case ARPHRD_RAWIP:
      return kTunnel;
    default:
      return kOther;
  }
}

// `kind` is the driver of a virtual link; empty for hardware.
Nature NatureOf(std::uint32_t type, std::string_view kind, bool enslaved) {
  if (type == kLoopback || type == kOther) return Nature::kNoCard;
  if (enslaved || kind == "ifb" || kind == "dummy") return Nature::kPartOfAnother;
  return kind.empty() ? Nature::kPhysical : Nature::kVirtual;
}

// The alias that the administrator gave the interface, else a text made of its kind and name.
std::wstring DescriptionOf(std::uint32_t type, const std::string& name, const std::string& alias,
                           std::string_view kind) {
  if (!alias.empty()) return Wide(alias);
  std::string what(kind);
  if (type == kLoopback) what = "Loopback";
  if (what.empty()) what = name.starts_with("wl") ? "Wireless" : "Ethernet";
  what.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(what.front())));
  return Wide(what + " (" + name + ")");
}

Link ReadLink(const nlmsghdr& message) {
  const auto& header = HeaderOf<ifinfomsg>(message);
  const NetlinkAttributes attributes(message, sizeof header);
  std::string kind;
  if (attributes[IFLA_LINKINFO] != nullptr) {
    kind = TextOf(NetlinkAttributes(*attributes[IFLA_LINKINFO])[IFLA_INFO_KIND]);
  }

  Link link;
  NetworkInterface& interface = link.interface;
  const std::string name = TextOf(attributes[IFLA_IFNAME]);
  interface.index = static_cast<std::uint32_t>(header.ifi_index);
  interface.name = Wide(name);
  interface.type = TypeOf(header);
  interface.description =
      DescriptionOf(interface.type, name, TextOf(attributes[IFLA_IFALIAS]), kind);
  interface.mtu = NumberOf(attributes[IFLA_MTU], 0);
  interface.up = (header.ifi_flags & IFF_UP) != 0 && (header.ifi_flags & IFF_RUNNING) != 0;
  interface.counters = CountersOf(attributes[IFLA_STATS64]);
  if (const nlattr* address = attributes[IFLA_ADDRESS]; address != nullptr) {
    const auto* bytes = static_cast<const BYTE*>(::mnl_attr_get_payload(address));
    interface.physicalAddress.assign(bytes, bytes + ::mnl_attr_get_payload_len(address));
  }
  link.nature = NatureOf(interface.type, kind, attributes[IFLA_MASTER] != nullptr);
  interface.isCard = link.nature != Nature::kNoCard;
  return link;
}

// An address with a limited lifetime counts as leased by DHCP.
bool IsLeased(const NetlinkAttributes& attributes) {
  if (attributes[IFA_CACHEINFO] == nullptr) return false;
  ifa_cacheinfo cache{};
  std::memcpy(
      &cache, ::mnl_attr_get_payload(attributes[IFA_CACHEINFO]),
      std::min<std::size_t>(::mnl_attr_get_payload_len(attributes[IFA_CACHEINFO]), sizeof cache));
  return cache.ifa_valid != std::numeric_limits<std::uint32_t>::max();
}

void AddHop(Links& links, std::uint32_t index, const nlattr* gateway, std::uint32_t metric) {
  const auto found = links.find(index);
  if (found == links.end()) return;
  Link& link = found->second;
  link.hasDefaultRoute = true;
  link.routeMetric = std::min(link.routeMetric, metric);
  if (gateway == nullptr) return;
  std::string text = AddressText(::mnl_attr_get_payload(gateway));
  std::vector<std::string>& gateways = link.interface.gateways;
  if (std::ranges::find(gateways, text) == gateways.end()) gateways.push_back(std::move(text));
}

// The hops of a route over several interfaces.
void AddHops(Links& links, const nlattr& nest, std::uint32_t metric) {
  const auto* hop = static_cast<const rtnexthop*>(::mnl_attr_get_payload(&nest));
  std::size_t left = ::mnl_attr_get_payload_len(&nest);
  while (left >= sizeof *hop && hop->rtnh_len >= sizeof *hop && hop->rtnh_len <= left) {
    const NetlinkAttributes attributes(RTNH_DATA(hop), hop->rtnh_len - sizeof *hop);
    AddHop(links, static_cast<std::uint32_t>(hop->rtnh_ifindex), attributes[RTA_GATEWAY], metric);
    left -= std::min<std::size_t>(left, RTNH_ALIGN(hop->rtnh_len));
    hop = RTNH_NEXT(hop);
  }
}

}  // namespace

InterfaceCounters CountersOf(const nlattr* attribute) {
  if (attribute == nullptr) return {};
  rtnl_link_stats64 statistics{};  // copied, as the attribute is aligned to four bytes only
  std::memcpy(&statistics, ::mnl_attr_get_payload(attribute),
              std::min<std::size_t>(::mnl_attr_get_payload_len(attribute), sizeof statistics));
  return {statistics.rx_bytes, statistics.tx_bytes, statistics.rx_packets, statistics.tx_packets};
}

void AddLink(Links& links, const nlmsghdr& message) {
  Link link = ReadLink(message);
  links.insert_or_assign(link.interface.index, std::move(link));
}

void AddAddress(Links& links, const nlmsghdr& message) {
  const auto& header = HeaderOf<ifaddrmsg>(message);
  const auto found = links.find(header.ifa_index);
  if (found == links.end() || header.ifa_family != AF_INET) return;
  const NetlinkAttributes attributes(message, sizeof header);
  // On a point-to-point link IFA_ADDRESS is the other end.
  const nlattr* address = attributes[IFA_LOCAL];
  if (address == nullptr) address = attributes[IFA_ADDRESS];
  if (address == nullptr) return;
  NetworkInterface& interface = found->second.interface;
  interface.addresses.push_back(
      {AddressText(::mnl_attr_get_payload(address)), MaskText(header.ifa_prefixlen)});
  interface.dhcp = interface.dhcp || IsLeased(attributes);
}

void AddDefaultRoute(Links& links, const nlmsghdr& message) {
  const auto& header = HeaderOf<rtmsg>(message);
  if (header.rtm_family != AF_INET || header.rtm_dst_len != 0 || header.rtm_type != RTN_UNICAST) {
    return;
  }
  const NetlinkAttributes attributes(message, sizeof header);
  if (NumberOf(attributes[RTA_TABLE], header.rtm_table) != RT_TABLE_MAIN) return;
  const std::uint32_t metric = NumberOf(attributes[RTA_PRIORITY], 0);
  if (attributes[RTA_MULTIPATH] != nullptr) {
    AddHops(links, *attributes[RTA_MULTIPATH], metric);
  } else {
    AddHop(links, NumberOf(attributes[RTA_OIF], 0), attributes[RTA_GATEWAY], metric);
  }
}

}  // namespace platform
