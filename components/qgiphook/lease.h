// The lease of an open gate: the rules of the closed gate stand, and before them one that accepts
// everything while a set has elements, which expire by themselves. Pure functions.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "table_rules.h"

namespace quillgate::gate {

// Makes the table of a closed gate one of a gate that is open for so long. A lease that is not
// positive has ended.
void AddLease(TableRules& table, std::chrono::milliseconds left);

// Returns the commands that make the lease of the present table end so much later from now,
// whether or not it has ended.
std::string RenewLease(const std::string& table, std::chrono::milliseconds left);

// Whether a lease has not ended, given the output of `list set` for its set.
bool LeaseRuns(std::string_view listing);

}  // namespace quillgate::gate
