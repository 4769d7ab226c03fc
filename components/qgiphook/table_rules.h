// One table of the packet filter with all that is in it, and the commands that bring the kernel
// from what it has to that. Values.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "network_prefix.h"
#include "table_shape.h"

namespace quillgate::gate {

using Rules = std::vector<std::string>;

struct ChainRules {
  std::string hook{};  // with the device where it stands on one; empty: others jump to it
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

// What the table must look like afterwards.
TableShape ShapeOf(const TableRules& table);

// Commands for one transaction; `present` is what there is of that table, null for nothing. Chains
// that stand where they should stay, and only get other rules: when a chain takes another one's
// place, there are moments when a packet has passed the new one before its rules are in force and
// comes to the place of the old one after it has gone; chains that stay have no such moments.
std::string ChangeTable(const TableRules& wanted, const TableShape* present);

}  // namespace quillgate::gate
