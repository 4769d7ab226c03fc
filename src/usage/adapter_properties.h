// Addresses, gateways and name servers of the machine's adapters, for display.
#pragma once

#include <windows.h>

#include <ctime>
#include <string>
#include <vector>

namespace quillgate {

struct AdapterAddress {
  std::wstring address;
  std::wstring mask;
};

struct AdapterProperties {
  std::wstring name;
  std::wstring description;
  std::wstring primaryWins;
  std::wstring secondaryWins;
  std::wstring dhcpServer;
  AdapterAddress current;  // both "0.0.0.0" when the adapter has none
  DWORD index = 0;
  DWORD type = 0;
  DWORD dhcpEnabled = 0;
  DWORD haveWins = 0;
  std::time_t leaseObtained = 0;
  std::time_t leaseExpires = 0;
  std::vector<AdapterAddress> addresses;
  std::vector<std::wstring> gateways;
  std::vector<std::wstring> nameServers;
};

// The size in bytes that each record counts for in `capacityBytes` and `requiredBytes`.
inline constexpr DWORD kAdapterRecordBytes = 212;

// Fills one record for each adapter in `properties`, whose size the caller states as
// `capacityBytes`. `requiredBytes` is always set. Returns 0, or ERROR_INSUFFICIENT_BUFFER, which
// fills nothing.
DWORD EnumerateAdapterProperties(AdapterProperties* properties, DWORD capacityBytes,
                                 DWORD* requiredBytes);

}  // namespace quillgate
