// What the connection sheet tells about the measured adapter. Asks the machine on every call.
#pragma once

#include <string>
#include <vector>

#include "text/message_ids.h"

namespace quillgate {

struct AdapterDetail {
  MessageId property;
  std::wstring value;

  bool operator==(const AdapterDetail&) const = default;
};

// In the order in which they are shown: name, MAC address, addresses, gateways, name servers; one
// entry for each value. What is not known is left out.
std::vector<AdapterDetail> ReadAdapterDetails(const std::wstring& serviceName);

}  // namespace quillgate
