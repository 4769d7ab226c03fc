// The network adapter whose traffic is measured: two byte counters, read from the driver's own
// statistics, or else from the interface table's 32-bit counters, extended over their wraps. Any
// thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "storage/critical_section.h"

namespace quillgate {

class NetworkAdapter {
 public:
  static constexpr DWORD kUnknownIndex = static_cast<DWORD>(-1);

  // Finds the interface index at once.
  explicit NetworkAdapter(std::wstring serviceName);

  // Finds the interface index again.
  void SetServiceName(std::wstring serviceName);
  std::wstring ServiceName() const;
  DWORD InterfaceIndex() const;

  // Bytes since the adapter began to count; 0 when nothing can be read.
  std::uint64_t BytesSent() const;
  std::uint64_t BytesReceived() const;

  // "00-0C-29-3A-5B-7C"; empty when the driver does not tell.
  std::wstring MacAddressText() const;

  // One NDIS object of the adapter's driver. 0 or the error; `returned` is 0 on failure.
  DWORD QueryNdis(DWORD objectId, void* buffer, DWORD bytes, DWORD* returned) const;

 private:
  struct Counter;
  std::uint64_t Read(const Counter& counter) const;

  mutable CriticalSection lock_;  // the adapter is changed on one thread and read on others
  std::wstring serviceName_;
  DWORD interfaceIndex_ = kUnknownIndex;
};

}  // namespace quillgate
