// The registry's list of network cards, made from CurrentInterfaces() when it is read. Any thread.
#pragma once

#include <string_view>
#include <vector>

#include "platform/registry/key_provider.h"

namespace platform {

inline constexpr std::wstring_view kNetworkCardsPath =
    L"Software\\Microsoft\\Windows NT\\CurrentVersion\\NetworkCards";

// Subkeys "1", "2" and so on with "ServiceName" and "Description". The default provider of
// kNetworkCardsPath.
std::vector<ProvidedKey> NetworkCardKeys();

}  // namespace platform
