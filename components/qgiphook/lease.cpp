#include "lease.h"

namespace quillgate::gate {

namespace {

// What a closed gate may drop, on bridges and interfaces too. The time is checked at each lookup,
// so a lease ends for running connections as well.
constexpr const char* kAcceptRule = "meta protocol @lease accept";
constexpr const char* kProtocols[] = {"ip", "ip6", "8021q", "8021ad"};

std::string Elements(std::chrono::milliseconds left) {
  std::string elements;
  for (const std::string protocol : kProtocols) {
    elements += elements.empty() ? "" : ", ";
    elements += protocol + " timeout " + std::to_string(left.count()) + "ms";
  }
  return elements;
}

}  // namespace

void AddLease(TableRules& table, std::chrono::milliseconds left) {
  AddressSet& set = table.sets[kLeaseSet];
  set.type = "ether_type; flags timeout";
  if (left.count() > 0) set.elements = {Elements(left)};
  for (auto& [name, chain] : table.chains)
    chain.rules.insert(chain.rules.begin(), kAcceptRule);
}

// An element that is present would keep its time, and deleting one that has expired would fail.
std::string RenewLease(const std::string& table, std::chrono::milliseconds left) {
  const std::string set = table + " " + kLeaseSet;
  return "flush set " + set + "\nadd element " + set + " { " + Elements(left) + " }\n";
}

bool LeaseRuns(std::string_view listing) {
  return listing.find("elements = ") != std::string_view::npos;
}

}  // namespace quillgate::gate
