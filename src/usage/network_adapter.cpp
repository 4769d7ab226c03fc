#include "usage/network_adapter.h"

#include <iphlpapi.h>
#include <ntddndis.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "handles/handle.h"
#include "usage/counter_extension.h"
#include "usage/ndis_query.h"

namespace quillgate {
namespace {

using NdisBuffer = std::array<BYTE, 16>;

// The table may grow between the query of its size and the reading.
constexpr std::size_t kTableSizeFactor = 864;

std::span<const MIB_IFROW> RowsOf(const MIB_IFTABLE& table) {
  return {table.table, table.dwNumEntries};
}

// Null when there is no table.
HeapBlock ReadInterfaceTable() {
  ULONG bytes = 0;
  if (::GetIfTable(nullptr, &bytes, TRUE) != ERROR_INSUFFICIENT_BUFFER) return {};
  const std::size_t capacity = std::min<std::size_t>(bytes * kTableSizeFactor, 0xFFFFFFFFu);
  HeapBlock block(::HeapAlloc(::GetProcessHeap(), 0, capacity));
  if (!block.IsValid()) return {};
  bytes = static_cast<ULONG>(capacity);
  const DWORD error = ::GetIfTable(static_cast<PMIB_IFTABLE>(block.Get()), &bytes, TRUE);
  return error == NO_ERROR ? std::move(block) : HeapBlock();
}

DWORD FindInterfaceIndex(std::span<const BYTE> macAddress) {
  if (macAddress.empty() || macAddress.size() > MAXLEN_PHYSADDR) {
    return NetworkAdapter::kUnknownIndex;
  }
  const HeapBlock block = ReadInterfaceTable();
  if (!block.IsValid()) return NetworkAdapter::kUnknownIndex;
  for (const MIB_IFROW& row : RowsOf(*static_cast<const MIB_IFTABLE*>(block.Get()))) {
    if (std::memcmp(row.bPhysAddr, macAddress.data(), macAddress.size()) == 0) return row.dwIndex;
  }
  return NetworkAdapter::kUnknownIndex;
}

// The bytes that the driver returned, at most the size of the buffer.
std::span<const BYTE> QueryMacAddress(const std::wstring& serviceName, NdisBuffer& buffer) {
  DWORD returned = 0;
  QueryNdisObject(serviceName, OID_802_3_CURRENT_ADDRESS, buffer.data(), sizeof(buffer), &returned);
  return {buffer.data(), std::min<std::size_t>(returned, buffer.size())};
}

}  // namespace

// The sources of a direction's count: the driver's object, and the field of the interface table.
struct NetworkAdapter::Counter {
  DWORD objectId;
  DWORD MIB_IFROW::*field;
  CounterExtension& extension;
};

NetworkAdapter::NetworkAdapter(std::wstring serviceName) {
  SetServiceName(std::move(serviceName));
}

void NetworkAdapter::SetServiceName(std::wstring serviceName) {
  NdisBuffer buffer{};
  const DWORD index = FindInterfaceIndex(QueryMacAddress(serviceName, buffer));
  const CriticalSectionLock lock(lock_);
  serviceName_ = std::move(serviceName);
  interfaceIndex_ = index;
  // The counts so far belong to another card.
  sentOrigin_ = 0;
  receivedOrigin_ = 0;
}

std::wstring NetworkAdapter::ServiceName() const {
  const CriticalSectionLock lock(lock_);
  return serviceName_;
}

DWORD NetworkAdapter::InterfaceIndex() const {
  const CriticalSectionLock lock(lock_);
  return interfaceIndex_;
}

std::uint64_t NetworkAdapter::Read(const Counter& counter) const {
  NdisBuffer buffer{};
  DWORD returned = 0;
  QueryNdis(counter.objectId, buffer.data(), sizeof(buffer), &returned);
  if (returned == sizeof(std::uint32_t) || returned == sizeof(std::uint64_t)) {
    std::uint64_t count = 0;
    std::memcpy(&count, buffer.data(), returned);
    return count;
  }
  MIB_IFROW row{};
  row.dwIndex = InterfaceIndex();
  if (row.dwIndex == kUnknownIndex || ::GetIfEntry(&row) != NO_ERROR) return 0;
  return counter.extension.Extend(row.*counter.field);
}

NetworkAdapter::Counter NetworkAdapter::SentCounter() {
  return {OID_GEN_DIRECTED_BYTES_XMIT, &MIB_IFROW::dwOutOctets, SentBytesExtension()};
}

NetworkAdapter::Counter NetworkAdapter::ReceivedCounter() {
  return {OID_GEN_DIRECTED_BYTES_RCV, &MIB_IFROW::dwInOctets, ReceivedBytesExtension()};
}

NetworkAdapter::Start NetworkAdapter::MoveOrigin() {
  return {MoveOrigin(SentCounter(), sentOrigin_), MoveOrigin(ReceivedCounter(), receivedOrigin_)};
}

// One reading sets both: a counter that passed 2^32 between two readings would count 2^32 too much.
std::uint32_t NetworkAdapter::MoveOrigin(const Counter& counter, std::uint64_t& origin) {
  constexpr std::uint64_t kLowBits = 0xFFFFFFFF;
  const std::uint64_t count = Read(counter);
  const CriticalSectionLock lock(lock_);
  origin = count & ~kLowBits;
  return static_cast<std::uint32_t>(count & kLowBits);
}

std::uint64_t NetworkAdapter::CountFrom(const std::uint64_t& origin, const Counter& counter) const {
  const std::uint64_t count = Read(counter);
  const CriticalSectionLock lock(lock_);
  return count > origin ? count - origin : 0;
}

std::uint64_t NetworkAdapter::BytesSent() const {
  return CountFrom(sentOrigin_, SentCounter());
}

std::uint64_t NetworkAdapter::BytesReceived() const {
  return CountFrom(receivedOrigin_, ReceivedCounter());
}

std::wstring NetworkAdapter::MacAddressText() const {
  constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
  NdisBuffer buffer{};
  std::wstring text;
  for (const BYTE each : QueryMacAddress(ServiceName(), buffer)) {
    if (!text.empty()) text += L'-';
    text += kDigits[each >> 4];
    text += kDigits[each & 0x0F];
  }
  return text;
}

DWORD NetworkAdapter::QueryNdis(DWORD objectId, void* buffer, DWORD bytes, DWORD* returned) const {
  return QueryNdisObject(ServiceName(), objectId, buffer, bytes, returned);
}

}  // namespace quillgate
