// The installed network cards, from the registry.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "storage/settings.h"
#include "usage/network_adapter.h"

namespace quillgate {

struct AdapterEntry {
  std::wstring serviceName;  // "Unknown" when it cannot be read
  std::wstring description;  // likewise
};

// In the order of the registry keys; empty when they cannot be read.
std::vector<AdapterEntry> ListInstalledAdapters();

// Empty when no card has this service name.
std::wstring AdapterDescription(std::wstring_view serviceName);

// The adapter named in the settings; otherwise the first card, whose service name is then stored in
// the settings. Null when the machine has no card.
std::unique_ptr<NetworkAdapter> ChooseAdapter(Settings& settings);

}  // namespace quillgate
