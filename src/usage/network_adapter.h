// The network adapter whose traffic is measured, with one byte counter for each direction. The
// counters are read from the driver's own statistics, otherwise from the interface table's 32-bit
// counters, extended over their wraps. Both count from an origin, a multiple of 2^32 of the
// adapter's counter. The low 32 bits that a session stores at its start are therefore the whole
// count. Any thread.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "handles/critical_section.h"

namespace quillgate {

class NetworkAdapter {
 public:
  static constexpr DWORD kUnknownIndex = static_cast<DWORD>(-1);

  // Also looks up the interface index.
  explicit NetworkAdapter(std::wstring serviceName);

  // Looks up the interface index again.
  void SetServiceName(std::wstring serviceName);
  std::wstring ServiceName() const;
  DWORD InterfaceIndex() const;

  // The low 32 bits of both counters.
  struct Start {
    std::uint32_t bytesSent = 0;
    std::uint32_t bytesReceived = 0;
  };
  // Moves the origin of each counter to the highest multiple of 2^32 not above its value. Returns
  // the counts from there; 0 for a counter that cannot be read.
  Start MoveOrigin();

  // Bytes since the origin, which initially is the adapter's own zero. 0 when nothing can be read,
  // or when the counter has fallen below the origin.
  std::uint64_t BytesSent() const;
  std::uint64_t BytesReceived() const;

  // "00-0C-29-3A-5B-7C"; empty when the driver does not report it.
  std::wstring MacAddressText() const;

  // Queries one NDIS object of the adapter's driver. Returns 0 or the error; `returned` is 0 on
  // failure.
  DWORD QueryNdis(DWORD objectId, void* buffer, DWORD bytes, DWORD* returned) const;

 private:
  struct Counter;
  static Counter SentCounter();
  static Counter ReceivedCounter();
  std::uint64_t Read(const Counter& counter) const;
  std::uint32_t MoveOrigin(const Counter& counter, std::uint64_t& origin);
  std::uint64_t CountFrom(const std::uint64_t& origin, const Counter& counter) const;

  mutable CriticalSection lock_;  // the adapter is changed on one thread and read on others
  std::wstring serviceName_;
  DWORD interfaceIndex_ = kUnknownIndex;
  std::uint64_t sentOrigin_ = 0;
  std::uint64_t receivedOrigin_ = 0;
};

}  // namespace quillgate
