// What other families get from the interfaces: a device for each one, which answers the NDIS
// statistics, and the registry's list of network cards. Made from CurrentInterfaces() when asked.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "platform/device/device_table.h"
#include "platform/registry/key_provider.h"

namespace platform {

inline constexpr std::wstring_view kNetworkCardsPath =
    L"Software\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";

// The device of the interface of that name; null when there is none. The default device resolver.
std::shared_ptr<Device> NetworkDevice(std::wstring_view name);

// Subkeys "1", "2" and so on with "ServiceName" and "Description". The default provider of
// kNetworkCardsPath.
std::vector<ProvidedKey> NetworkCardKeys();

}  // namespace platform
