// GetAdaptersInfo and GetPerAdapterInfo. The structures point to further ones, which follow them in
// the caller's buffer.
#include <iphlpapi.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>
#include <span>

#include "platform/kernel/api_result.h"
#include "platform/kernel/encoding.h"
#include "platform/net/interface_source.h"

namespace platform {
namespace {

// Truncates the text to the field, which ends with a null.
template <std::size_t kSize>
void SetText(char (&field)[kSize], std::string_view text) {
  const std::size_t length = std::min(text.size(), kSize - 1);
  std::memcpy(field, text.data(), length);
  field[length] = '\0';
}

// Allocates the second and later addresses of each list; the first is part of the structure.
class FurtherAddresses {
 public:
  explicit FurtherAddresses(void* first) : next_(static_cast<IP_ADDR_STRING*>(first)) {}

  void Fill(IP_ADDR_STRING& list, std::span<const AddressAndMask> addresses) {
    IP_ADDR_STRING* last = &list;
    for (std::size_t i = 0; i < addresses.size(); ++i) {
      if (i > 0) {
        last->Next = new (next_++) IP_ADDR_STRING{};
        last = last->Next;
      }
      SetText(last->IpAddress.String, addresses[i].address);
      SetText(last->IpMask.String, addresses[i].mask);
    }
  }

 private:
  IP_ADDR_STRING* next_;
};

std::size_t Further(std::size_t addresses) {
  return addresses > 1 ? addresses - 1 : 0;
}

std::vector<AddressAndMask> WithoutMask(const std::vector<std::string>& addresses) {
  std::vector<AddressAndMask> result;
  for (const std::string& address : addresses)
    result.push_back({address, ""});
  return result;
}

// A list without addresses has the single entry 0.0.0.0.
std::vector<AddressAndMask> OrZero(std::vector<AddressAndMask> addresses) {
  if (addresses.empty()) addresses.push_back({"0.0.0.0", "0.0.0.0"});
  return addresses;
}

std::vector<NetworkInterface> ListCards() {
  std::vector<NetworkInterface> cards = CurrentInterfaces().List();
  std::erase_if(cards, [](const NetworkInterface& each) { return !each.isCard; });
  return cards;
}

ULONG AdapterBytes(std::span<const NetworkInterface> cards) {
  std::size_t further = 0;
  for (const NetworkInterface& card : cards) {
    further += Further(card.addresses.size()) + Further(card.gateways.size());
  }
  return static_cast<ULONG>(cards.size() * sizeof(IP_ADAPTER_INFO) +
                            further * sizeof(IP_ADDR_STRING));
}

void FillAdapter(const NetworkInterface& card, IP_ADAPTER_INFO& info, FurtherAddresses& further) {
  SetText(info.AdapterName, Utf8(card.name));
  SetText(info.Description, Utf8(card.description));
  info.AddressLength = static_cast<UINT>(
      std::min<std::size_t>(card.physicalAddress.size(), MAX_ADAPTER_ADDRESS_LENGTH));
  std::copy_n(card.physicalAddress.begin(), info.AddressLength, info.Address);
  info.ComboIndex = card.index;
  info.Index = card.index;
  info.Type = card.type;
  info.DhcpEnabled = card.dhcp ? 1 : 0;
  further.Fill(info.IpAddressList, OrZero(card.addresses));
  further.Fill(info.GatewayList, OrZero(WithoutMask(card.gateways)));
  info.CurrentIpAddress = card.addresses.empty() ? nullptr : &info.IpAddressList;
}

}  // namespace
}  // namespace platform

DWORD WINAPI GetAdaptersInfo(PIP_ADAPTER_INFO adapters, PULONG bytes) try {
  using namespace platform;
  if (bytes == nullptr) return ERROR_INVALID_PARAMETER;
  const std::vector<NetworkInterface> cards = ListCards();
  if (cards.empty()) return ERROR_NO_DATA;
  const ULONG needed = AdapterBytes(cards);
  if (adapters == nullptr || *bytes < needed) {
    *bytes = needed;
    return ERROR_BUFFER_OVERFLOW;
  }
  FurtherAddresses further(adapters + cards.size());
  for (std::size_t i = 0; i < cards.size(); ++i) {
    auto* const info = new (adapters + i) IP_ADAPTER_INFO{};
    FillAdapter(cards[i], *info, further);
    if (i + 1 < cards.size()) info->Next = adapters + i + 1;
  }
  return NO_ERROR;
} catch (...) {
  return platform::ErrorOfException();
}

DWORD WINAPI GetPerAdapterInfo(ULONG index, PIP_PER_ADAPTER_INFO info, PULONG bytes) try {
  using namespace platform;
  if (bytes == nullptr) return ERROR_INVALID_PARAMETER;
  const std::vector<NetworkInterface> cards = ListCards();
  const auto card = std::ranges::find(cards, index, &NetworkInterface::index);
  if (card == cards.end()) return ERROR_INVALID_PARAMETER;
  const auto needed = static_cast<ULONG>(
      sizeof(IP_PER_ADAPTER_INFO) + Further(card->nameServers.size()) * sizeof(IP_ADDR_STRING));
  if (info == nullptr || *bytes < needed) {
    *bytes = needed;
    return ERROR_BUFFER_OVERFLOW;
  }
  new (info) IP_PER_ADAPTER_INFO{};
  FurtherAddresses(info + 1).Fill(info->DnsServerList, WithoutMask(card->nameServers));
  return NO_ERROR;
} catch (...) {
  return platform::ErrorOfException();
}
