// The visible properties of a table of the packet filter, to compare the wanted table with the
// present one. Value types and pure functions.
#pragma once

#include <compare>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace quillgate::gate {

struct ChainShape {
  std::string hook{};      // empty: other chains jump to it
  std::string priority{};  // as printed in the listing, like the hook
  std::size_t rules = 0;
  bool drops = false;  // policy drop: packets that no rule accepts
  auto operator<=>(const ChainShape&) const = default;
};

struct TableShape {
  std::map<std::string, ChainShape> chains{};
  std::set<std::string> sets{};
  bool dormant = false;       // present, but switched off
  bool holdsForeign = false;  // objects of kinds that a closed gate never has
  auto operator<=>(const TableShape&) const = default;
};

// Parses the output of `list table`, of one or several tables, into shapes by name ("inet
// quillgate").
std::map<std::string, TableShape> ReadTableShapes(std::string_view listing);

// The set that the lease of an open gate consists of.
inline constexpr const char* kLeaseSet = "lease";

// The listing without the tables' owners, which do not affect the rules, and without the elements
// of the lease, which expire by themselves.
std::string WithoutVolatile(std::string_view listing);

}  // namespace quillgate::gate
