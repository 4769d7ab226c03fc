#include <arpa/inet.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <winerror.h>

#include <array>
#include <cerrno>

#include "platform/device/ip_filter_driver.h"
#include "platform/net/linux_netlink.h"

namespace platform {

DWORD AskPacketFilter() {
  // Querying the ruleset's generation is the smallest request of nf_tables.
  alignas(nlmsghdr) std::array<char, 256> requestBuffer{};
  nlmsghdr& request = *::mnl_nlmsg_put_header(requestBuffer.data());
  request.nlmsg_type = (NFNL_SUBSYS_NFTABLES << 8) | NFT_MSG_GETGEN;
  auto* family = static_cast<nfgenmsg*>(::mnl_nlmsg_put_extra_header(&request, sizeof(nfgenmsg)));
  family->nfgen_family = AF_UNSPEC;
  family->version = NFNETLINK_V0;
  family->res_id = htons(0);
  std::array<char, 8192> replyBuffer{};
  NetlinkSocket socket(NETLINK_NETFILTER);
  if (socket.AskOne(request, replyBuffer, [](const nlmsghdr&) {})) return NO_ERROR;
  return errno == EPERM || errno == EACCES ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
}

}  // namespace platform
