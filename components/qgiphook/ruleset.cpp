#include "ruleset.h"

#include <algorithm>

namespace quillgate::gate {

namespace {

using Rules = std::vector<std::string>;

constexpr const char* kLocal4 = "local4";
constexpr const char* kLocal6 = "local6";
constexpr const char* kGroups4 = "groups4";
constexpr const char* kGroups6 = "groups6";

// Neighbour discovery as RFC 4861 has it: no extension headers, code 0, and the hop limit that only
// a neighbour's packet still has.
constexpr const char* kDiscovery = "ip6 nexthdr icmpv6 ip6 hoplimit 255 icmpv6 code 0 icmpv6 type ";

// A packet that names further stops, in a routing header or a source route, does not end where its
// destination address says.
const Rules kNotReallyLocal = {
    "ip option lsrr exists drop",
    "ip option ssrr exists drop",
    "exthdr rt exists drop",
};

std::string Discovery(const char* type, const char* onlyFor = "") {
  return std::string(onlyFor) + kDiscovery + type + " accept";
}

// The policy of a chain comes into force a moment after its rules do, so a rule says it too.
Rules ThenDrop(Rules rules) {
  rules.push_back("drop");
  return rules;
}

Rules InputRules(bool allowLocal) {
  Rules rules = {
      "iifname \"lo\" accept",
      "meta nfproto ipv4 udp sport 67 udp dport 68 accept",
      "ip6 saddr fe80::/10 ip6 daddr fe80::/10 udp sport 547 udp dport 546 accept",
      Discovery("nd-router-advert", "ip6 saddr fe80::/10 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
  if (!allowLocal) return ThenDrop(rules);
  rules.insert(rules.end(), kNotReallyLocal.begin(), kNotReallyLocal.end());
  rules.insert(rules.end(), {"ip saddr @local4 accept", "ip6 saddr @local6 accept",
                             "ip daddr @groups4 accept", "ip6 daddr @groups6 accept"});
  return ThenDrop(rules);
}

Rules OutputRules(bool allowLocal) {
  Rules rules = {
      "oifname \"lo\" accept",
      "meta nfproto ipv4 udp sport 68 udp dport 67 accept",
      "ip6 saddr fe80::/10 ip6 daddr ff02::1:2 udp sport 546 udp dport 547 accept",
      "ip6 saddr fe80::/10 ip6 daddr fe80::/10 udp sport 546 udp dport 547 accept",
      Discovery("nd-router-solicit", "ip6 daddr ff02::2 "),
      Discovery("nd-neighbor-solicit"),
      Discovery("nd-neighbor-advert"),
  };
  if (!allowLocal) return ThenDrop(rules);
  rules.insert(rules.end(), kNotReallyLocal.begin(), kNotReallyLocal.end());
  rules.insert(rules.end(), {"ip daddr @local4 accept", "ip6 daddr @local6 accept",
                             "ip daddr @groups4 accept", "ip6 daddr @groups6 accept"});
  return ThenDrop(rules);
}

// For others only what has both of its ends on this side.
Rules ForwardRules(bool allowLocal) {
  if (!allowLocal) return ThenDrop({});
  Rules rules = kNotReallyLocal;
  rules.insert(
      rules.end(),
      {"ip saddr @local4 ip daddr @local4 accept", "ip6 saddr @local6 ip6 daddr @local6 accept",
       "ip saddr @local4 ip daddr @groups4 accept", "ip6 saddr @local6 ip6 daddr @groups6 accept"});
  return ThenDrop(rules);
}

struct SetOfAddresses {
  const char* name;
  const char* type;
  std::vector<NetworkPrefix> LocalTraffic::*prefixes;
};
constexpr SetOfAddresses kSets[] = {
    {kLocal4, "ipv4_addr", &LocalTraffic::unicast4},
    {kLocal6, "ipv6_addr", &LocalTraffic::unicast6},
    {kGroups4, "ipv4_addr", &LocalTraffic::groups4},
    {kGroups6, "ipv6_addr", &LocalTraffic::groups6},
};

std::string Command(const char* verb, const std::string& rest = "") {
  return std::string(verb) + " " + std::string(kTableName) + rest + "\n";
}

std::string SetBody(const SetOfAddresses& set, const std::string& elements) {
  return std::string(" ") + set.name + " { type " + set.type + "; flags interval; " + elements +
         "}";
}

// Without the rules and the sets; adding a set first makes deleting it succeed where it is missing.
std::string EmptyTable() {
  std::string commands = Command("flush table");
  for (const SetOfAddresses& set : kSets) {
    commands +=
        Command("add set", SetBody(set, "")) + Command("delete set", std::string(" ") + set.name);
  }
  return commands;
}

std::string AddSet(const SetOfAddresses& set, const std::vector<NetworkPrefix>& prefixes) {
  std::string elements;
  for (const NetworkPrefix& prefix : prefixes) {
    elements += (elements.empty() ? "" : ", ") + prefix.Text();
  }
  return Command("add set", SetBody(set, "elements = { " + elements + " }; "));
}

// A chain is named for the place where it stands.
std::string AddChain(const std::string& hook) {
  return Command("add chain",
                 " " + hook + " { type filter hook " + hook + " priority filter; policy drop; }");
}

std::string_view Trimmed(std::string_view line) {
  const auto start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos) return {};
  return line.substr(start, line.find_last_not_of(" \t") - start + 1);
}

std::string WordAfter(std::string_view line, std::string_view before) {
  const auto at = line.find(before);
  if (at == std::string_view::npos) return {};
  line.remove_prefix(at + before.size());
  return std::string(line.substr(0, line.find(' ')));
}

// Reads the lines of a listing one after the other.
class ShapeReader {
 public:
  void Read(std::string_view line) {
    if (line.empty()) return;
    if (line == "}") {
      inSet_ = false;
      chain_ = nullptr;
    } else if (chain_ != nullptr) {
      ReadChainLine(line);
    } else if (!inSet_) {
      ReadTableLine(line);
    }
  }

  TableShape Take() { return std::move(shape_); }

 private:
  void ReadTableLine(std::string_view line) {
    if (line.starts_with("set ")) {
      shape_.sets.insert(WordAfter(line, "set "));
      inSet_ = true;
    } else if (line.starts_with("chain ")) {
      chain_ = &shape_.chains[WordAfter(line, "chain ")];
    } else if (line.starts_with("flags ") && line.find("dormant") != std::string_view::npos) {
      shape_.dormant = true;
    }
  }

  void ReadChainLine(std::string_view line) {
    if (!line.starts_with("type ")) {
      ++chain_->rules;
      return;
    }
    chain_->hook = WordAfter(line, " hook ");
    chain_->drops = line.find("policy drop;") != std::string_view::npos;
  }

  TableShape shape_;
  ChainShape* chain_ = nullptr;
  bool inSet_ = false;
};

}  // namespace

Ruleset ClosedGate(const LocalTraffic* local) {
  const bool allowLocal = local != nullptr;
  Ruleset result;
  std::string chains;
  std::string content;
  if (allowLocal) {
    for (const SetOfAddresses& set : kSets) {
      content += AddSet(set, local->*set.prefixes);
      result.shape.sets.insert(set.name);
    }
  }
  const std::map<std::string, Rules> rulesOf = {{"input", InputRules(allowLocal)},
                                                {"output", OutputRules(allowLocal)},
                                                {"forward", ForwardRules(allowLocal)}};
  for (const auto& [hook, rules] : rulesOf) {
    chains += AddChain(hook);
    for (const std::string& rule : rules)
      content += Command("add rule", " " + hook + " " + rule);
    result.shape.chains[hook] = {.hook = hook, .drops = true, .rules = rules.size()};
  }
  result.replaceTable = OpenGateCommands() + Command("add table") + chains + content;
  result.replaceRules = EmptyTable() + content;
  return result;
}

bool CanKeepChains(const TableShape& table, const TableShape& closedGate) {
  const auto withoutRules = [](std::map<std::string, ChainShape> chains) {
    for (auto& [name, chain] : chains)
      chain.rules = 0;
    return chains;
  };
  const auto isOurs = [](const std::string& name) {
    return std::ranges::find(kSets, name, &SetOfAddresses::name) != std::end(kSets);
  };
  return !table.dormant && std::ranges::all_of(table.sets, isOurs) &&
         withoutRules(table.chains) == withoutRules(closedGate.chains);
}

// Adding first makes deleting succeed where there is no table.
std::string OpenGateCommands() {
  return Command("add table") + Command("delete table");
}

TableShape ReadTableShape(std::string_view listing) {
  ShapeReader reader;
  while (!listing.empty()) {
    const auto end = std::min(listing.find('\n'), listing.size());
    reader.Read(Trimmed(listing.substr(0, end)));
    listing.remove_prefix(std::min(end + 1, listing.size()));
  }
  return reader.Take();
}

}  // namespace quillgate::gate
