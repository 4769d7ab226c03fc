#include "platform/net/network_cards.h"

#include <string>

#include "platform/net/interface_source.h"

namespace platform {

std::vector<ProvidedKey> NetworkCardKeys() {
  std::vector<ProvidedKey> keys;
  for (const NetworkInterface& each : CurrentInterfaces().List()) {
    if (!each.isCard) continue;
    keys.push_back({std::to_wstring(keys.size() + 1),
                    {{L"ServiceName", each.name}, {L"Description", each.description}}});
  }
  return keys;
}

}  // namespace platform
