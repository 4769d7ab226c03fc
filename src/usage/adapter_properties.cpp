#include "usage/adapter_properties.h"

#include <iphlpapi.h>

#include <cstring>

#include "encoding/multibyte.h"
#include "handles/handle.h"

namespace quillgate {
namespace {

constexpr char kNoAddress[] = "0.0.0.0";

HeapBlock ZeroedBlock(ULONG bytes) {
  return HeapBlock(::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, bytes));
}

// Null when there are no adapters or they cannot be read.
HeapBlock ReadAdapters() {
  ULONG bytes = 0;
  if (::GetAdaptersInfo(nullptr, &bytes) != ERROR_BUFFER_OVERFLOW) return {};
  HeapBlock block = ZeroedBlock(bytes);
  if (!block.IsValid()) return {};
  const DWORD error = ::GetAdaptersInfo(static_cast<PIP_ADAPTER_INFO>(block.Get()), &bytes);
  return error == NO_ERROR ? std::move(block) : HeapBlock();
}

template <std::size_t size>
std::wstring TextOf(const char (&field)[size]) {
  return Widen({field, ::strnlen(field, size)});
}

AdapterAddress AddressOf(const IP_ADDR_STRING& node) {
  return {TextOf(node.IpAddress.String), TextOf(node.IpMask.String)};
}

std::vector<AdapterAddress> AddressesOf(const IP_ADDR_STRING& head) {
  std::vector<AdapterAddress> addresses;
  for (const IP_ADDR_STRING* node = &head; node != nullptr; node = node->Next)
    addresses.push_back(AddressOf(*node));
  return addresses;
}

std::vector<std::wstring> TextsOf(const IP_ADDR_STRING& head) {
  std::vector<std::wstring> texts;
  for (const IP_ADDR_STRING* node = &head; node != nullptr; node = node->Next)
    texts.push_back(TextOf(node->IpAddress.String));
  return texts;
}

std::vector<std::wstring> NameServersOf(DWORD index) {
  ULONG bytes = 0;
  if (::GetPerAdapterInfo(index, nullptr, &bytes) != ERROR_BUFFER_OVERFLOW) return {};
  const HeapBlock block = ZeroedBlock(bytes);
  if (!block.IsValid()) return {};
  const auto info = static_cast<PIP_PER_ADAPTER_INFO>(block.Get());
  if (::GetPerAdapterInfo(index, info, &bytes) != NO_ERROR) return {};
  return TextsOf(info->DnsServerList);
}

AdapterProperties PropertiesOf(const IP_ADAPTER_INFO& info) {
  AdapterProperties properties;
  properties.name = TextOf(info.AdapterName);
  properties.description = TextOf(info.Description);
  properties.primaryWins = TextOf(info.PrimaryWinsServer.IpAddress.String);
  properties.secondaryWins = TextOf(info.SecondaryWinsServer.IpAddress.String);
  properties.dhcpServer = TextOf(info.DhcpServer.IpAddress.String);
  properties.current = info.CurrentIpAddress != nullptr
                           ? AddressOf(*info.CurrentIpAddress)
                           : AdapterAddress{Widen(kNoAddress), Widen(kNoAddress)};
  properties.index = info.Index;
  properties.type = info.Type;
  properties.dhcpEnabled = info.DhcpEnabled;
  properties.haveWins = static_cast<DWORD>(info.HaveWins);
  properties.leaseObtained = info.LeaseObtained;
  properties.leaseExpires = info.LeaseExpires;
  properties.addresses = AddressesOf(info.IpAddressList);
  properties.gateways = TextsOf(info.GatewayList);
  properties.nameServers = NameServersOf(info.Index);
  return properties;
}

}  // namespace

DWORD EnumerateAdapterProperties(AdapterProperties* properties, DWORD capacityBytes,
                                 DWORD* requiredBytes) {
  const HeapBlock block = ReadAdapters();
  const auto first = static_cast<const IP_ADAPTER_INFO*>(block.Get());
  DWORD count = 0;
  for (const IP_ADAPTER_INFO* info = first; info != nullptr; info = info->Next)
    ++count;
  *requiredBytes = count * kAdapterRecordBytes;
  if (capacityBytes < *requiredBytes) return ERROR_INSUFFICIENT_BUFFER;
  for (const IP_ADAPTER_INFO* info = first; info != nullptr; info = info->Next)
    *properties++ = PropertiesOf(*info);
  return NO_ERROR;
}

}  // namespace quillgate
