// Runs commands of the kernel's packet filter. Used by one thread at a time.
#pragma once

#include <nftables/libnftables.h>

#include <cstdint>
#include <memory>
#include <string>

namespace quillgate::gate {

// Whether this process may use the packet filter. Returns 0, ERROR_ACCESS_DENIED without the right,
// ERROR_FILE_NOT_FOUND when the kernel has no packet filter, or another error.
std::uint32_t FilterAccess();

// The generation number of the packet filter, which every change increments. Throws
// std::system_error.
std::uint32_t FilterGeneration();

class NftSession {
 public:
  // To be called only after FilterAccess returned 0: without the packet filter in the kernel, the
  // library ends the process. Throws std::bad_alloc.
  NftSession();

  // Runs the commands as one transaction: all or none. Returns 0, or the Win32 error of the first
  // failure, whose text is then Error().
  std::uint32_t Run(const std::string& commands);

  // Whether the kernel would accept the commands; they are not executed. The library mixes up tried
  // commands with the present state, so a session that calls this must not be used for anything
  // else.
  bool WouldRun(const std::string& commands);

  // The netlink socket that the session sends commands on, owned by the session; -1 when unknown.
  int Socket() const;

  // The output of the latest commands and their error text. Valid until the next Run.
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
