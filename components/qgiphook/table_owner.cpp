#include "table_owner.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <libmnl/libmnl.h>
#include <linux/netfilter.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <unistd.h>

#include <cstdint>
#include <system_error>
#include <vector>

#include "netlink_query.h"
#include "netlink_socket.h"

namespace quillgate::gate {

namespace {

constexpr std::uint32_t kOwner = 0x2;    // NFT_TABLE_F_OWNER
constexpr std::uint32_t kPersist = 0x4;  // NFT_TABLE_F_PERSIST, newer than some headers
constexpr std::uint32_t kOwnedForGood = kOwner | kPersist;

struct TableKey {
  std::uint8_t family = NFPROTO_UNSPEC;
  std::string name;
};

TableKey KeyOf(const std::string& table) {
  const auto blank = table.find(' ');
  const std::string family = table.substr(0, blank);
  const std::string name = table.substr(blank + 1);
  if (family == "inet") return {NFPROTO_INET, name};
  if (family == "bridge") return {NFPROTO_BRIDGE, name};
  return {NFPROTO_NETDEV, name};
}

// A transaction of one message about a table.
class Batch {
 public:
  Batch(std::uint16_t type, std::uint16_t flags, const TableKey& key, std::uint32_t tableFlags)
      : bytes_(kBytes) {
    Put(NFNL_MSG_BATCH_BEGIN, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES);
    nlmsghdr* message = Put(static_cast<std::uint16_t>(NFNL_SUBSYS_NFTABLES << 8 | type),
                            static_cast<std::uint16_t>(flags | NLM_F_ACK), key.family, 0);
    mnl_attr_put_strz(message, NFTA_TABLE_NAME, key.name.c_str());
    if (tableFlags != 0) mnl_attr_put_u32(message, NFTA_TABLE_FLAGS, htonl(tableFlags));
    used_ += message->nlmsg_len - (sizeof(nlmsghdr) + sizeof(nfgenmsg));
    Put(NFNL_MSG_BATCH_END, 0, AF_UNSPEC, NFNL_SUBSYS_NFTABLES);
  }

  // Returns whether the kernel accepted it. The kernel replies before the send call returns.
  bool Send(mnl_socket* socket) {
    if (mnl_socket_sendto(socket, bytes_.data(), used_) < 0) return false;
    std::vector<char> reply(kBytes);
    const ssize_t size = mnl_socket_recvfrom(socket, reply.data(), reply.size());
    return size > 0 && mnl_cb_run(reply.data(), static_cast<std::size_t>(size), 0, 0, nullptr,
                                  nullptr) >= MNL_CB_STOP;
  }

 private:
  static constexpr std::size_t kBytes = 4096;

  nlmsghdr* Put(std::uint16_t type, std::uint16_t flags, std::uint8_t family,
                std::uint16_t resource) {
    nlmsghdr* message = mnl_nlmsg_put_header(bytes_.data() + used_);
    message->nlmsg_type = type;
    message->nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | flags);
    message->nlmsg_seq = ++sequence_;
    auto* header = static_cast<nfgenmsg*>(mnl_nlmsg_put_extra_header(message, sizeof(nfgenmsg)));
    header->nfgen_family = family;
    header->version = NFNETLINK_V0;
    header->res_id = htons(resource);
    used_ += message->nlmsg_len;
    return message;
  }

  std::vector<char> bytes_;
  std::size_t used_ = 0;
  std::uint32_t sequence_ = 0;
};

int KeepFlags(const nlattr* attribute, void* context) {
  if (mnl_attr_get_type(attribute) == NFTA_TABLE_FLAGS) {
    *static_cast<std::uint32_t*>(context) = ntohl(mnl_attr_get_u32(attribute));
  }
  return MNL_CB_OK;
}

std::uint32_t ReadFlags(const TableKey& key) {
  std::uint32_t flags = 0;
  NetlinkQuery query(NETLINK_NETFILTER, NFNL_SUBSYS_NFTABLES << 8 | NFT_MSG_GETTABLE, NLM_F_ACK);
  auto& header = query.Header<nfgenmsg>();
  header.nfgen_family = key.family;
  header.version = NFNETLINK_V0;
  query.Text(NFTA_TABLE_NAME, key.name);
  query.Run([&flags](const nlmsghdr* message) {
    mnl_attr_parse(message, sizeof(nfgenmsg), KeepFlags, &flags);
  });
  return flags;
}

bool Own(mnl_socket* socket, const TableKey& key) {
  return Batch(NFT_MSG_NEWTABLE, NLM_F_CREATE, key, kOwnedForGood).Send(socket);
}

}  // namespace

bool CanOwnTables() {
  const NetlinkSocket socket = OpenNetlink(NETLINK_NETFILTER);
  if (socket == nullptr) return false;
  const TableKey probe{NFPROTO_INET, "quillgate_probe"};
  if (!Own(socket.get(), probe)) return false;
  std::uint32_t flags = 0;
  try {
    flags = ReadFlags(probe);
  } catch (const std::system_error&) {
    // Flags that cannot be read back count as not set.
  }
  const bool isGone = Batch(NFT_MSG_DELTABLE, 0, probe, 0).Send(socket.get());
  return isGone && (flags & kOwnedForGood) == kOwnedForGood;
}

void OwnTable(int socket, const std::string& table) {
  const int copy = ::fcntl(socket, F_DUPFD_CLOEXEC, 0);
  const NetlinkSocket owner(copy < 0 ? nullptr : mnl_socket_fdopen(copy));
  if (owner == nullptr) {
    if (copy >= 0) ::close(copy);
    return;
  }
  Own(owner.get(), KeyOf(table));
}

}  // namespace quillgate::gate
