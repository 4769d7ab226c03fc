#include "ui/adapter_details.h"

#include <algorithm>

#include "usage/adapter_list.h"
#include "usage/adapter_properties.h"

namespace quillgate {
namespace {

std::vector<AdapterProperties> AllAdapters() {
  DWORD bytes = 0;
  EnumerateAdapterProperties(nullptr, 0, &bytes);
  std::vector<AdapterProperties> adapters(bytes / kAdapterRecordBytes);
  // Fails if another adapter was added between the two calls.
  if (EnumerateAdapterProperties(adapters.data(), bytes, &bytes) != NO_ERROR) return {};
  return adapters;
}

void Append(std::vector<AdapterDetail>& details, MessageId property, const std::wstring& value) {
  if (!value.empty()) details.push_back({property, value});
}

}  // namespace

std::vector<AdapterDetail> ReadAdapterDetails(const std::wstring& serviceName) {
  std::vector<AdapterDetail> details;
  Append(details, kMsgNetworkAdapter, AdapterDescription(serviceName));
  Append(details, kMsgMacAddress, NetworkAdapter(serviceName).MacAddressText());
  const std::vector<AdapterProperties> adapters = AllAdapters();
  const auto found = std::ranges::find(adapters, serviceName, &AdapterProperties::name);
  if (found == adapters.end()) return details;
  for (const AdapterAddress& each : found->addresses)
    Append(details, kMsgIpAddress, each.address);
  for (const std::wstring& each : found->gateways)
    Append(details, kMsgGateway, each);
  for (const std::wstring& each : found->nameServers)
    Append(details, kMsgDnsServer, each);
  return details;
}

}  // namespace quillgate
