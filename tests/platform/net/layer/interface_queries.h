// Interfaces as a program asks for them.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <iphlpapi.h>

#include <string>
#include <vector>

inline HANDLE OpenInterface(const std::wstring& name) {
  return ::CreateFileW((L"\\\\.\\" + name).c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
}

// The chain, and behind it the memory of its further addresses.
inline std::vector<IP_ADAPTER_INFO> Adapters() {
  ULONG bytes = 0;
  EXPECT_EQ(::GetAdaptersInfo(nullptr, &bytes), ERROR_BUFFER_OVERFLOW);
  std::vector<IP_ADAPTER_INFO> memory(bytes / sizeof(IP_ADAPTER_INFO) + 1);
  EXPECT_EQ(::GetAdaptersInfo(memory.data(), &bytes), NO_ERROR);
  return memory;
}

inline std::vector<std::string> Addresses(const IP_ADDR_STRING& list) {
  std::vector<std::string> addresses;
  for (const IP_ADDR_STRING* each = &list; each != nullptr; each = each->Next)
    addresses.emplace_back(each->IpAddress.String);
  return addresses;
}

inline std::vector<std::string> NameServers(DWORD index) {
  ULONG bytes = 0;
  EXPECT_EQ(::GetPerAdapterInfo(index, nullptr, &bytes), ERROR_BUFFER_OVERFLOW);
  std::vector<IP_PER_ADAPTER_INFO> info(bytes / sizeof(IP_PER_ADAPTER_INFO) + 1);
  EXPECT_EQ(::GetPerAdapterInfo(index, info.data(), &bytes), NO_ERROR);
  return Addresses(info[0].DnsServerList);
}
