// One table of the packet filter with its contents, and the commands that change the kernel's table
// accordingly. Value types and pure functions.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "network_prefix.h"
#include "table_shape.h"

namespace quillgate::gate {

using Rules = std::vector<std::string>;

struct ChainRules {
  std::string hook{};  // with the device, if any; empty: other chains jump to it
  Rules rules{};
};

struct AddressSet {
  std::string type;  // with its flags
  std::vector<std::string> elements{};
};

struct TableRules {
  std::string name;  // with its family
  std::map<std::string, AddressSet> sets{};
  std::map<std::string, ChainRules> chains{};
};

AddressSet SetOf(std::string type, const std::vector<NetworkPrefix>& prefixes);

// The shape of the table after the change.
TableShape ShapeOf(const TableRules& table);

// Returns commands for one transaction. `present` is the kernel's table, null when there is none.
// Chains that keep their hook stay and only get other rules. If a new chain replaced an old one, a
// packet could pass the new chain before its rules are in force and reach the old chain's hook
// after that chain is removed. A chain that stays has no such gap.
std::string ChangeTable(const TableRules& wanted, const TableShape* present);

}  // namespace quillgate::gate
