#include "gate_watch.h"

#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

namespace quillgate::gate {

namespace {

constexpr int kForever = -1;
// The pause between two calls, however many changes there are. A closed gate must be restored
// within 100 ms.
constexpr int kPauseMilliseconds = 10;
constexpr int kLongestPauseMilliseconds = 10'000;  // after calls that failed

[[noreturn]] void ThrowError(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

constexpr unsigned GroupBit(unsigned group) {
  return 1u << (group - 1);
}

constexpr unsigned kTableGroups = GroupBit(NFNLGRP_NFTABLES);
constexpr unsigned kLinkGroups = GroupBit(RTNLGRP_LINK) | GroupBit(RTNLGRP_IPV4_IFADDR) |
                                 GroupBit(RTNLGRP_IPV6_IFADDR) | GroupBit(RTNLGRP_IPV4_ROUTE) |
                                 GroupBit(RTNLGRP_IPV6_ROUTE);

// Every message about an object in a table begins with the table's name. NFT_MSG_NEWGEN, which ends
// a transaction, has a number there.
bool IsAbout(const nlmsghdr* message, std::string_view table) {
  if ((message->nlmsg_type & 0xff) == NFT_MSG_NEWGEN) return false;
  if (mnl_nlmsg_get_payload_len(message) < sizeof(nfgenmsg) + sizeof(nlattr)) return false;
  const auto* name =
      static_cast<const nlattr*>(mnl_nlmsg_get_payload_offset(message, sizeof(nfgenmsg)));
  return mnl_attr_ok(name, static_cast<int>(mnl_nlmsg_get_payload_len(message))) &&
         mnl_attr_get_type(name) == NFTA_TABLE_NAME &&
         mnl_attr_validate(name, MNL_TYPE_NUL_STRING) >= 0 && mnl_attr_get_str(name) == table;
}

// Reads the waiting messages and passes each to `read`. Returns true when messages were lost.
template <class Read>
bool Drain(mnl_socket* socket, Read read) {
  constexpr int kMostAtOnce = 256;
  std::array<char, 32768> buffer;
  for (int i = 0; i < kMostAtOnce; ++i) {
    const ssize_t size =
        ::recv(mnl_socket_get_fd(socket), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size < 0) return errno == ENOBUFS;
    int left = static_cast<int>(size);
    for (auto* message = reinterpret_cast<const nlmsghdr*>(buffer.data());
         mnl_nlmsg_ok(message, left); message = mnl_nlmsg_next(message, &left)) {
      read(message);
    }
  }
  return false;
}

NetlinkSocket Join(int bus, unsigned groups) {
  NetlinkSocket socket = OpenNetlink(bus, groups);
  if (socket == nullptr) ThrowError("netlink");
  return socket;
}

}  // namespace

GateWatch::GateWatch(std::string tableName, Tell notify)
    : tableName_(std::move(tableName)),
      notify_(std::move(notify)),
      tables_(Join(NETLINK_NETFILTER, kTableGroups)),
      links_(Join(NETLINK_ROUTE, kLinkGroups)),
      stop_(::eventfd(0, EFD_CLOEXEC)) {
  if (stop_ < 0) ThrowError("eventfd");
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (...) {
    ::close(stop_);
    throw;
  }
}

GateWatch::~GateWatch() {
  ::eventfd_write(stop_, 1);
  thread_.join();
  ::close(stop_);
}

// Returns false when the watch ends. Nothing is read during a pause: messages stay in the sockets.
bool GateWatch::Wait(int milliseconds) {
  const bool isPause = milliseconds != kForever;
  std::array<pollfd, 3> waiting{{{stop_, POLLIN, 0},
                                 {mnl_socket_get_fd(tables_.get()), POLLIN, 0},
                                 {mnl_socket_get_fd(links_.get()), POLLIN, 0}}};
  const nfds_t count = isPause ? 1 : waiting.size();
  while (::poll(waiting.data(), count, milliseconds) < 0 && errno == EINTR) {
  }
  return waiting[0].revents == 0;
}

void GateWatch::Receive() {
  const bool lostTables = Drain(tables_.get(), [this](const nlmsghdr* message) {
    tablesChanged_ = tablesChanged_ || IsAbout(message, tableName_);
  });
  const bool lostLinks = Drain(links_.get(), [this](const nlmsghdr*) { linksChanged_ = true; });
  tablesChanged_ = tablesChanged_ || lostTables;
  linksChanged_ = linksChanged_ || lostLinks;
}

void GateWatch::Run() noexcept {
  int failurePause = kPauseMilliseconds;
  while (Wait(tablesChanged_ || linksChanged_ ? 0 : kForever)) {
    Receive();
    if (!tablesChanged_ && !linksChanged_) continue;
    const bool done = notify_(linksChanged_);
    if (done) tablesChanged_ = linksChanged_ = false;
    failurePause =
        done ? kPauseMilliseconds : std::min(failurePause * 2, kLongestPauseMilliseconds);
    if (!Wait(failurePause)) return;
  }
}

}  // namespace quillgate::gate
