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
  AdapterAddress current;  // "0.0.0.0" twice when the adapter has none
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

// What one record counts for in the capacity that a caller states, in bytes.
inline constexpr DWORD kAdapterRecordBytes = 212;

// Fills one record for each adapter in `properties`, which the caller sized for `capacityBytes`.
// `requiredBytes` is always told. 0, or ERROR_INSUFFICIENT_BUFFER, which fills nothing.
DWORD EnumerateAdapterProperties(AdapterProperties* properties, DWORD capacityBytes,
                                 DWORD* requiredBytes);

}  // namespace quillgate
