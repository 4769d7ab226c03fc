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
constexpr std::size_t kReplyBytes = 16 * 1024;
constexpr std::size_t kRequestBytes = 128;
constexpr int kTries = 5;               // of a reading that notices disturb
constexpr std::size_t kNameBytes = 16;  // of an interface, with its null

// A request with space for its header and one attribute.
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

// A reading must not be older than a notice that was counted before it: the counters would seem to
// decrease.
bool LinuxInterfaces::ReadUndisturbed(const std::function<bool()>& read) {
  notices_.Take(counted_);
  for (int i = 0; i < kTries; ++i) {
    const bool complete = read();
    if (!notices_.Take(counted_) && complete) return true;
  }
  return false;
}

InterfaceCounters LinuxInterfaces::Counted(const LinkReading& reading, bool undisturbed) {
  return undisturbed ? counted_.Read(reading) : counted_.Latest(reading);
}

std::vector<NetworkInterface> LinuxInterfaces::List() {
  const std::lock_guard lock(mutex_);
  std::optional<Links> links;
  int error = 0;
  const bool undisturbed = ReadUndisturbed([&] {
    Links fresh;
    const bool complete = ReadAll(socket_, fresh);
    error = errno;
    if (complete) links = std::move(fresh);
    return complete;
  });
  if (!links) {
    LogLine(std::string("the network interfaces cannot be read: ") + std::strerror(error));
    return {};
  }

  std::vector<Link> sorted;
  for (auto& [index, link] : *links)
    sorted.push_back(std::move(link));
  std::ranges::stable_sort(sorted, IsOfferedBefore);
  const std::vector<std::string> nameServers = MachineNameServers();
  std::vector<NetworkInterface> interfaces;
  for (Link& link : sorted) {
    NetworkInterface& interface = link.interface;
    if (link.hasDefaultRoute) interface.nameServers = nameServers;
    interface.counters =
        Counted({interface.name, interface.index, interface.counters}, undisturbed);
    interfaces.push_back(std::move(interface));
  }
  return interfaces;
}

std::optional<InterfaceCounters> LinuxInterfaces::Counters(std::wstring_view name) {
  const std::string narrow = Utf8(name);
  if (narrow.empty() || narrow.size() >= kNameBytes) return std::nullopt;
  const std::lock_guard lock(mutex_);
  std::array<char, kReplyBytes> buffer;
  std::optional<LinkReading> reading;
  bool isMissing = false;
  const bool undisturbed = ReadUndisturbed([&] {
    Request<ifinfomsg> request(RTM_GETLINK);
    ::mnl_attr_put_strz(&request.Message(), IFLA_IFNAME, narrow.c_str());
    reading.reset();
    const bool succeeded = socket_.AskOne(
        request.Message(), buffer, [&](const nlmsghdr& message) { reading = ReadingOf(message); });
    isMissing = !succeeded && errno == ENODEV;
    return succeeded || isMissing;
  });
  if (isMissing) counted_.Missed(name);
  if (!reading) return std::nullopt;
  return Counted(*reading, undisturbed);
}

}  // namespace platform
