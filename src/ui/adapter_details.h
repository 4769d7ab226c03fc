// The details of the measured adapter that the connection sheet shows. Every call queries the
// system.
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

// Returns the details in the order in which they are shown: name, MAC address, addresses, gateways,
// name servers; one entry for each value. Values that the system does not report are left out.
std::vector<AdapterDetail> ReadAdapterDetails(const std::wstring& serviceName);

}  // namespace quillgate
