// The rules of the closed gate: one table with a chain at each place where packets pass, all of
// which drop what no rule accepts. Packets are judged one by one and by their own two ends, never
// by the connection that they belong to, so that a running download stops as well. The chains stand
// at the usual place for filters, which is behind the translation of destinations and, for what
// comes in, before that of sources: the addresses are the true ones.
//
// What never comes to these chains, and needs the administrator's rights to be set up: frames that
// a bridge passes on, machines on a macvlan, flow tables (the driver warns of those), XDP and raw
// packet sockets.
#pragma once

#include <compare>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "network_prefix.h"

namespace quillgate::gate {

inline constexpr std::string_view kTableName = "inet quillgate";

// What counts as local, at the moment of closing.
struct LocalTraffic {
  std::vector<NetworkPrefix> unicast4;
  std::vector<NetworkPrefix> unicast6;
  std::vector<NetworkPrefix> groups4;
  std::vector<NetworkPrefix> groups6;
};

// What can be told about a table from outside, to compare what is wanted with what is there.
struct ChainShape {
  std::string hook;
  bool drops = false;  // what no rule accepts
  std::size_t rules = 0;
  auto operator<=>(const ChainShape&) const = default;
};
struct TableShape {
  std::map<std::string, ChainShape> chains;
  std::set<std::string> sets;
  bool dormant = false;  // there, but switched off
  auto operator<=>(const TableShape&) const = default;
};

// The closed gate, and the two ways to it. Each is one transaction.
struct Ruleset {
  TableShape shape;  // what the table must look like afterwards

  // Makes the table anew, whatever there was of that name.
  std::string replaceTable;
  // Puts other rules into the chains that stand there already. When a chain takes another one's
  // place, there are moments when a packet has passed the new one before its rules are in force and
  // comes to the place of the old one after it has gone; chains that stay have no such moments.
  std::string replaceRules;
};

// Null: everything is blocked that is not needed to keep the link alive.
Ruleset ClosedGate(const LocalTraffic* local);

// Whether a table has the chains of the closed gate, whatever their rules, and nothing that stays
// when its rules are replaced.
bool CanKeepChains(const TableShape& table, const TableShape& closedGate);

// Removes the table, in one transaction; succeeds when there is none.
std::string OpenGateCommands();

// The shape of a table that `list table` printed.
TableShape ReadTableShape(std::string_view listing);

}  // namespace quillgate::gate
