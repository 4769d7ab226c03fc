// What can be told about a table of the packet filter from outside, to compare what is wanted with
// what is there. Values.
#pragma once

#include <compare>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace quillgate::gate {

struct ChainShape {
  std::string hook{};      // empty for a chain that others jump to
  std::string priority{};  // as the listing says it, like the hook
  std::size_t rules = 0;
  bool drops = false;  // what no rule accepts
  auto operator<=>(const ChainShape&) const = default;
};

struct TableShape {
  std::map<std::string, ChainShape> chains{};
  std::set<std::string> sets{};
  bool dormant = false;       // there, but switched off
  bool holdsForeign = false;  // kinds of things that a closed gate has none of
  auto operator<=>(const TableShape&) const = default;
};

// The tables that `list table` printed, one or several of them, by their names ("inet quillgate").
std::map<std::string, TableShape> ReadTableShapes(std::string_view listing);

// The listing without what it tells of the tables' owners, which is no part of what they do.
std::string WithoutOwners(std::string_view listing);

}  // namespace quillgate::gate
