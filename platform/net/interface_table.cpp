// GetIfTable and GetIfEntry. Octet and packet counters are the low 32 bits of the interface's
// counters.
#include <iphlpapi.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/net/interface_source.h"

namespace platform {
namespace {

constexpr DWORD kAdminUp = 1;  // MIB_IF_ADMIN_STATUS_UP
constexpr DWORD kAdminDown = 2;
constexpr DWORD kOperational = 5;  // MIB_IF_OPER_STATUS_OPERATIONAL
constexpr DWORD kNonOperational = 0;

DWORD Low32(std::uint64_t value) {
  return static_cast<DWORD>(value & 0xFFFFFFFF);
}

void FillRow(const NetworkInterface& from, MIB_IFROW& row) {
  row = {};
  from.name.copy(row.wszName, MAX_INTERFACE_NAME_LEN - 1);
  row.dwIndex = from.index;
  row.dwType = from.type;
  row.dwMtu = from.mtu;
  row.dwSpeed = static_cast<DWORD>(
      std::min<std::uint64_t>(from.bitsPerSecond, std::numeric_limits<DWORD>::max()));
  const std::size_t addressBytes =
      std::min<std::size_t>(from.physicalAddress.size(), MAXLEN_PHYSADDR);
  row.dwPhysAddrLen = static_cast<DWORD>(addressBytes);
  std::copy_n(from.physicalAddress.begin(), addressBytes, row.bPhysAddr);
  row.dwAdminStatus = from.up ? kAdminUp : kAdminDown;
  row.dwOperStatus = from.up ? kOperational : kNonOperational;
  row.dwInOctets = Low32(from.counters.bytesReceived);
  row.dwInUcastPkts = Low32(from.counters.packetsReceived);
  row.dwOutOctets = Low32(from.counters.bytesSent);
  row.dwOutUcastPkts = Low32(from.counters.packetsSent);
  const std::string description = Utf8(from.description);
  row.dwDescrLen = static_cast<DWORD>(std::min<std::size_t>(description.size(), MAXLEN_IFDESCR));
  std::memcpy(row.bDescr, description.data(), row.dwDescrLen);
}

ULONG TableBytes(std::size_t rows) {
  return static_cast<ULONG>(offsetof(MIB_IFTABLE, table) +
                            std::max<std::size_t>(rows, ANY_SIZE) * sizeof(MIB_IFROW));
}

}  // namespace
}  // namespace platform

DWORD WINAPI GetIfTable(PMIB_IFTABLE table, PULONG bytes, BOOL order) try {
  using namespace platform;
  if (bytes == nullptr) return ERROR_INVALID_PARAMETER;
  std::vector<NetworkInterface> interfaces = CurrentInterfaces().List();
  const ULONG needed = TableBytes(interfaces.size());
  if (table == nullptr || *bytes < needed) {
    *bytes = needed;
    return ERROR_INSUFFICIENT_BUFFER;
  }
  if (order) std::ranges::sort(interfaces, {}, &NetworkInterface::index);
  table->dwNumEntries = static_cast<DWORD>(interfaces.size());
  for (std::size_t i = 0; i < interfaces.size(); ++i)
    FillRow(interfaces[i], table->table[i]);
  return NO_ERROR;
} catch (...) {
  return platform::ErrorOfException();
}

DWORD WINAPI GetIfEntry(PMIB_IFROW row) try {
  using namespace platform;
  if (row == nullptr) return ERROR_INVALID_PARAMETER;
  const std::vector<NetworkInterface> interfaces = CurrentInterfaces().List();
  const auto found = std::ranges::find(interfaces, row->dwIndex, &NetworkInterface::index);
  if (found == interfaces.end()) return ERROR_INVALID_DATA;
  FillRow(*found, *row);
  return NO_ERROR;
} catch (...) {
  return platform::ErrorOfException();
}
