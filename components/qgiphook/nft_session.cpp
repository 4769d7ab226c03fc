#include "nft_session.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/netfilter/nf_tables.h>
#include <linux/netfilter/nfnetlink.h>
#include <sys/socket.h>
#include <winerror.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <new>
#include <set>
#include <string>
#include <system_error>

#include "netlink_query.h"

namespace quillgate::gate {

namespace {

struct ErrorPair {
  int number;
  std::uint32_t error;
};

// Without a packet filter the error number depends on the part that is missing.
constexpr ErrorPair kAccessErrors[] = {
    {EPERM, ERROR_ACCESS_DENIED},
    {EACCES, ERROR_ACCESS_DENIED},
    {EINVAL, ERROR_FILE_NOT_FOUND},
    {EOPNOTSUPP, ERROR_FILE_NOT_FOUND},
    {EPROTONOSUPPORT, ERROR_FILE_NOT_FOUND},
    {EAFNOSUPPORT, ERROR_FILE_NOT_FOUND},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {ENOBUFS, ERROR_NOT_ENOUGH_MEMORY},
};

constexpr ErrorPair kCommandErrors[] = {
    {EPERM, ERROR_ACCESS_DENIED},       {ENOENT, ERROR_FILE_NOT_FOUND},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},  {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {ENOBUFS, ERROR_NOT_ENOUGH_MEMORY},
};

// The library reports the kernel's error number only as its text.
std::uint32_t ErrorOfText(const std::string& text) {
  for (const auto& [number, error] : kCommandErrors) {
    if (text.find(std::strerror(number)) != std::string::npos) return error;
  }
  return ERROR_GEN_FAILURE;
}

int KeepGeneration(const nlattr* attribute, void* context) {
  if (mnl_attr_get_type(attribute) == NFTA_GEN_ID) {
    *static_cast<std::uint32_t*>(context) = ntohl(mnl_attr_get_u32(attribute));
  }
  return MNL_CB_OK;
}

bool IsFilterSocket(int descriptor) {
  int domain = 0;
  int protocol = 0;
  socklen_t bytes = sizeof domain;
  return ::getsockopt(descriptor, SOL_SOCKET, SO_DOMAIN, &domain, &bytes) == 0 &&
         domain == AF_NETLINK &&
         ::getsockopt(descriptor, SOL_SOCKET, SO_PROTOCOL, &protocol, &bytes) == 0 &&
         protocol == NETLINK_NETFILTER;
}

std::set<int> FilterSockets() {
  std::set<int> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    const std::string name = entry.path().filename();
    int descriptor = -1;
    std::from_chars(name.data(), name.data() + name.size(), descriptor);
    if (IsFilterSocket(descriptor)) found.insert(descriptor);
  }
  return found;
}

// The library caches the owners of tables in its memory. It stays loaded when the driver is
// unloaded, so that the next driver finds the cache.
void KeepLibrary() {
  ::dlopen("libnftables.so.1", RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}

}  // namespace

std::uint32_t FilterGeneration() {
  std::uint32_t generation = 0;
  NetlinkQuery query(NETLINK_NETFILTER, NFNL_SUBSYS_NFTABLES << 8 | NFT_MSG_GETGEN, NLM_F_ACK);
  query.Header<nfgenmsg>().version = NFNETLINK_V0;
  query.Run([&generation](const nlmsghdr* message) {
    mnl_attr_parse(message, sizeof(nfgenmsg), KeepGeneration, &generation);
  });
  return generation;
}

std::uint32_t FilterAccess() {
  try {
    FilterGeneration();
    return 0;
  } catch (const std::system_error& failure) {
    for (const auto& [number, error] : kAccessErrors) {
      if (failure.code().value() == number) return error;
    }
    return ERROR_GEN_FAILURE;
  }
}

// The library does not expose its socket: it is the netlink socket that the call has added.
NftSession::NftSession() {
  KeepLibrary();
  const std::set<int> before = FilterSockets();
  context_.reset(nft_ctx_new(NFT_CTX_DEFAULT));
  std::set<int> made = FilterSockets();
  for (const int descriptor : before)
    made.erase(descriptor);
  if (made.size() == 1) socket_ = *made.begin();
  // A child process that inherited it would own the tables after this session has ended.
  if (socket_ >= 0) ::fcntl(socket_, F_SETFD, FD_CLOEXEC);
  if (context_ == nullptr) throw std::bad_alloc();
  nft_ctx_output_set_flags(context_.get(), NFT_CTX_OUTPUT_STATELESS);
  if (nft_ctx_buffer_output(context_.get()) != 0) throw std::bad_alloc();
  if (nft_ctx_buffer_error(context_.get()) != 0) throw std::bad_alloc();
}

bool NftSession::WouldRun(const std::string& commands) {
  nft_ctx_set_dry_run(context_.get(), true);
  return Run(commands) == 0;
}

// The library replaces its socket when the packet filter changed while it was being read.
int NftSession::Socket() const {
  return IsFilterSocket(socket_) ? socket_ : -1;
}

std::uint32_t NftSession::Run(const std::string& commands) {
  const int result = nft_run_cmd_from_buffer(context_.get(), commands.c_str());
  // Both buffers must be read every time: unread text would precede the next one.
  output_ = nft_ctx_get_output_buffer(context_.get());
  error_ = nft_ctx_get_error_buffer(context_.get());
  return result == 0 ? 0 : ErrorOfText(error_);
}

}  // namespace quillgate::gate
