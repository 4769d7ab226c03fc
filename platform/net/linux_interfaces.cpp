#include "platform/net/linux_interfaces.h"

#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <tuple>

#include "platform/kernel/encoding.h"
#include "platform/kernel/log.h"
#include "platform/net/linux_links.h"
#include "platform/net/linux_name_servers.h"

namespace platform {
namespace {

constexpr std::size_t kDumpBytes = 32 * 1024;  // the largest piece of a dump
constexpr std::size_t kAnswerBytes = 16 * 1024;
constexpr std::size_t kRequestBytes = 128;
constexpr int kTries = 5;               // of a dump that changes happened to
constexpr std::size_t kNameBytes = 16;  // of an interface, with its null

// A request with room for its header and one attribute.
template <class Header>
class Request {
 public:
  explicit Request(std::uint16_t type) : message_(*::mnl_nlmsg_put_header(buffer_.data())) {
    message_.nlmsg_type = type;
    header_ = static_cast<Header*>(::mnl_nlmsg_put_extra_header(&message_, sizeof(Header)));
  }
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;

  Header* operator->() { return header_; }
  nlmsghdr& Message() { return message_; }

 private:
  alignas(nlmsghdr) std::array<char, kRequestBytes> buffer_{};
  nlmsghdr& message_;
  Header* header_ = nullptr;
};

bool ReadAll(NetlinkSocket& socket, Links& links) {
  std::vector<char> buffer(kDumpBytes);
  Request<ifinfomsg> linkRequest(RTM_GETLINK);
  Request<ifaddrmsg> addressRequest(RTM_GETADDR);
  addressRequest->ifa_family = AF_INET;
  Request<rtmsg> routeRequest(RTM_GETROUTE);
  routeRequest->rtm_family = AF_INET;
  const auto collector = [&links](void (*add)(Links&, const nlmsghdr&)) {
    return [&links, add](const nlmsghdr& message) { add(links, message); };
  };
  return socket.AskAll(linkRequest.Message(), buffer, collector(AddLink)) &&
         socket.AskAll(addressRequest.Message(), buffer, collector(AddAddress)) &&
         socket.AskAll(routeRequest.Message(), buffer, collector(AddDefaultRoute));
}

bool IsOfferedBefore(const Link& left, const Link& right) {
  const auto rank = [](const Link& link) {
    const bool leads = link.hasDefaultRoute && link.interface.isCard;
    return std::make_tuple(!link.interface.isCard, !leads, link.routeMetric, link.nature,
                           link.interface.index);
  };
  return rank(left) < rank(right);
}

}  // namespace

std::vector<NetworkInterface> LinuxInterfaces::List() {
  Links links;
  bool complete = false;
  for (int i = 0; i < kTries && !complete; ++i) {
    links.clear();
    complete = ReadAll(socket_, links);
  }
  if (!complete) {
    LogLine(std::string("the network interfaces cannot be read: ") + std::strerror(errno));
    return {};
  }

  std::vector<Link> sorted;
  for (auto& [index, link] : links)
    sorted.push_back(std::move(link));
  std::ranges::stable_sort(sorted, IsOfferedBefore);
  const std::vector<std::string> nameServers = MachineNameServers();
  std::vector<NetworkInterface> interfaces;
  for (Link& link : sorted) {
    if (link.hasDefaultRoute) link.interface.nameServers = nameServers;
    interfaces.push_back(std::move(link.interface));
  }
  return interfaces;
}

std::optional<InterfaceCounters> LinuxInterfaces::Counters(std::wstring_view name) {
  const std::string narrow = Utf8(name);
  if (narrow.empty() || narrow.size() >= kNameBytes) return std::nullopt;
  Request<ifinfomsg> request(RTM_GETLINK);
  ::mnl_attr_put_strz(&request.Message(), IFLA_IFNAME, narrow.c_str());
  std::array<char, kAnswerBytes> buffer;
  std::optional<InterfaceCounters> counters;
  socket_.AskOne(request.Message(), buffer, [&](const nlmsghdr& message) {
    counters = CountersOf(NetlinkAttributes(message, sizeof(ifinfomsg))[IFLA_STATS64]);
  });
  return counters;
}

}  // namespace platform
