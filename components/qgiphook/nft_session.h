// The way to the kernel's packet filter. Used by one thread at a time.
#pragma once

#include <nftables/libnftables.h>

#include <cstdint>
#include <memory>
#include <string>

namespace quillgate::gate {

// Whether this process may use the packet filter: 0, ERROR_ACCESS_DENIED without the right to,
// ERROR_FILE_NOT_FOUND when the kernel has none, or what else went wrong.
std::uint32_t FilterAccess();

// The number of the packet filter's state, which every change of it raises. Throws
// std::system_error.
std::uint32_t FilterGeneration();

class NftSession {
 public:
  // Only after FilterAccess answered 0: without a kernel that knows the packet filter, the library
  // beneath ends the process. Throws std::bad_alloc.
  NftSession();

  // Carries all of the commands out as one transaction, or none. 0, or the Win32 error of the first
  // reason, of which Error() then is the text.
  std::uint32_t Run(const std::string& commands);

  // Whether the kernel would carry the commands out; it does not. The library confuses what it has
  // tried with what is there, so this is a session's only use.
  bool WouldRun(const std::string& commands);

  // The netlink socket that carries the commands, still the session's; -1 when it cannot be told.
  int Socket() const;

  // What the latest commands printed, and why they failed; until the next Run.
  const std::string& Output() const { return output_; }
  const std::string& Error() const { return error_; }

 private:
  struct ContextCloser {
    void operator()(nft_ctx* context) const { nft_ctx_free(context); }
  };
  std::unique_ptr<nft_ctx, ContextCloser> context_;
  int socket_ = -1;
  std::string output_;
  std::string error_;
};

}  // namespace quillgate::gate
