#include "packet_gate.h"

#include <winerror.h>

#include <system_error>

#include "lease.h"
#include "table_owner.h"

namespace quillgate::gate {

namespace {

constexpr const char* kTables[] = {kTableName, kBridgeTable, kDeviceTable};

std::string DeleteAll(const std::vector<std::string>& tables) {
  std::string commands;
  for (const std::string& table : tables)
    commands += "delete table " + table + "\n";
  return commands;
}

}  // namespace

PacketGate::PacketGate(Write log, Write report, Lease lease)
    : log_(std::move(log)), report_(std::move(report)), lease_(std::move(lease)) {}

NftSession& PacketGate::Session() {
  if (!session_) session_.emplace();
  return *session_;
}

std::uint32_t PacketGate::Failed(const char* what, std::uint32_t error, const std::string& reason) {
  log_(std::string(what) + ": " + reason.substr(0, reason.find('\n')));
  return error;
}

std::uint32_t PacketGate::Open() {
  const std::uint32_t error = FilterAccess();
  switch (error) {
    case 0:
      return 0;
    case ERROR_ACCESS_DENIED:
      return Failed("the gate cannot be opened", error, "no right to change the packet filter");
    case ERROR_FILE_NOT_FOUND:
      return Failed("the gate cannot be opened", error, "the kernel has no nf_tables");
    default:
      return Failed("the gate cannot be opened", error, "the packet filter does not answer");
  }
}

// The tables of a closed gate may have been changed since, or those of an older version may differ:
// they are replaced. How much of a lease is left is known to the kernel only.
void PacketGate::TakeOver() {
  const std::lock_guard lock(mutex_);
  // Without access to the packet filter there is nothing to hold; Open reports the error.
  std::string listing;
  if (FilterAccess() != 0 || ReadListing(listing) != 0) return;
  const GateState state = StateOf(listing);
  held_ = state != GateState::kOpen;
  if (state == GateState::kClosed) Close(AllowsLocal(listing), {});
}

std::uint32_t PacketGate::ReadState(GateState& state) {
  const std::lock_guard lock(mutex_);
  std::string listing;
  const std::uint32_t error = ReadListing(listing);
  if (error == 0) state = StateOf(listing);
  return error;
}

GateState PacketGate::StateOf(const std::string& listing) {
  bool hasChains = false;
  for (const auto& [name, shape] : ReadTableShapes(listing))
    hasChains = hasChains || !shape.chains.empty();
  if (!hasChains) return GateState::kOpen;
  const std::string set = std::string(kTableName) + " " + kLeaseSet;
  const bool isOnLease = Session().Run("list set " + set) == 0 && LeaseRuns(Session().Output());
  return isOnLease ? GateState::kOnLease : GateState::kClosed;
}

std::uint32_t PacketGate::ReadNames(std::vector<std::string>& present) {
  present.clear();
  const std::uint32_t error = Session().Run("list tables");
  if (error != 0) return Failed("the gate cannot be read", error, Session().Error());
  const std::string lines = "\n" + Session().Output();
  for (const char* table : kTables) {
    if (lines.find("\ntable " + std::string(table) + "\n") != std::string::npos) {
      present.emplace_back(table);
    }
  }
  return 0;
}

std::uint32_t PacketGate::ReadListing(std::string& listing) {
  listing.clear();
  std::vector<std::string> present;
  std::uint32_t error = ReadNames(present);
  // Given several tables, the library lists only the first one.
  for (const std::string& table : present) {
    if (error == 0) error = Session().Run("list table " + table);
    if (error != 0) return Failed("the closed gate cannot be read", error, Session().Error());
    listing += WithoutVolatile(Session().Output());
  }
  return error;
}

// Only a correct listing is kept for comparison.
std::uint32_t PacketGate::ReadBack(const std::vector<TableRules>& wanted) {
  std::string listing;
  const std::uint32_t error = ReadListing(listing);
  if (error != 0) return error;
  const Tables present = ReadTableShapes(listing);
  for (const TableRules& table : wanted) {
    const auto found = present.find(table.name);
    if (found != present.end() && found->second == ShapeOf(table)) continue;
    return Failed("the gate is not closed as it should be", ERROR_INVALID_DATA,
                  "the kernel holds other rules");
  }
  closed_->listing = listing;
  return 0;
}

// A dry run with the same rules for the loopback interface, in tables of other names, shows which
// hooks the kernel supports.
const FrameHooks& PacketGate::Hooks() {
  if (hooks_) return *hooks_;
  const auto has = [](const FrameHooks& tried) {
    std::string commands;
    for (TableRules& table : FrameRules({.interfaces = {"lo"}}, true, tried)) {
      table.name += "_probe";
      commands += ChangeTable(table, nullptr);
    }
    return NftSession().WouldRun(commands);
  };
  hooks_ = {.bridge = has({.bridge = true}),
            .ingress = has({.ingress = true}),
            .egress = has({.egress = true})};
  if (!hooks_->bridge || !hooks_->egress) {
    const std::string text =
        "The kernel cannot filter all frames: machines behind a bridge or a macvlan of this one "
        "pass a closed gate.";
    log_(text);
    report_(text);
  }
  return *hooks_;
}

void PacketGate::WarnOfFlowTables() {
  // An error of a kernel without flow tables counts as an empty list.
  if (Session().Run("list flowtables") != 0) return;
  if (Session().Output().find("flowtable ") == std::string::npos) return;
  log_("a flow table forwards connections past the closed gate");
}

// When the connected subnets cannot be read, the gate closes with those read last instead of
// staying open.
MachineLinks PacketGate::LinksNow() {
  try {
    links_ = ReadMachineLinks();
  } catch (const std::system_error& failure) {
    log_(std::string("the connected subnets cannot be read: ") + failure.what());
  }
  return links_;
}

std::uint32_t PacketGate::Pass() {
  const std::lock_guard lock(mutex_);
  if (held_) {
    held_ = false;
    passIsDue_ = true;
    return 0;
  }
  passIsDue_ = false;
  const std::chrono::milliseconds length = lease_();
  return length.count() == 0 ? RemoveTables() : OpenFor(length);
}

std::uint32_t PacketGate::OpenFor(std::chrono::milliseconds length) {
  const Deadline end = Clock::now() + length;
  if (!IsOnLease() || closed_->allowLocal != allowLocal_) return Close(allowLocal_, end);
  closed_->leaseEnd = end;
  const std::uint32_t error = PutBackIfChanged(false);
  return error != 0 ? error : Renew(length);
}

std::uint32_t PacketGate::Renew(std::chrono::milliseconds length) {
  std::string commands;
  for (const auto& [name, shape] : ReadTableShapes(closed_->listing))
    commands += RenewLease(name, length);
  if (Session().Run(commands) != 0) return Close(closed_->allowLocal, closed_->leaseEnd);
  // A higher number tells of changes by others.
  const std::uint32_t renewed = closed_->generation + 1;
  if (FilterGeneration() == renewed) closed_->generation = renewed;
  return 0;
}

void PacketGate::Leave() {
  const std::lock_guard lock(mutex_);
  if (passIsDue_ || IsOnLease()) RemoveTables();
}

std::uint32_t PacketGate::RemoveTables() {
  std::vector<std::string> present;
  std::uint32_t error = ReadNames(present);
  if (error != 0) return error;
  if (present.empty()) {
    closed_.reset();
    return 0;
  }
  error = Session().Run(DeleteAll(present));
  if (error == ERROR_FILE_NOT_FOUND && ReadNames(present) == 0) {
    // Another process removed some of them meanwhile.
    error = present.empty() ? 0 : Session().Run(DeleteAll(present));
  }
  if (error != 0) return Failed("the gate stays as it is", error, Session().Error());
  closed_.reset();
  error = ReadNames(present);
  if (error != 0 || present.empty()) return error;
  return Failed("the gate is not open", ERROR_INVALID_DATA, "the kernel still holds the rules");
}

// Removes tables that were created to be owned and did not get their rules.
void PacketGate::RemoveEmptyTables() {
  std::string listing;
  if (ReadListing(listing) != 0) return;
  std::vector<std::string> empty;
  for (const auto& [name, shape] : ReadTableShapes(listing)) {
    if (shape.chains.empty()) empty.push_back(name);
  }
  if (!empty.empty()) Session().Run(DeleteAll(empty));
}

void PacketGate::OwnTables(const std::vector<TableRules>& tables) {
  const int socket = Session().Socket();
  if (!canOwn_) canOwn_ = CanOwnTables();
  if (!*canOwn_ || socket < 0) return;
  for (const TableRules& table : tables)
    OwnTable(socket, table.name);
}

std::uint32_t PacketGate::TryToReplace(const std::vector<TableRules>& wanted) {
  OwnTables(wanted);
  std::string listing;
  const std::uint32_t error = ReadListing(listing);
  if (error != 0) return error;
  const Tables present = ReadTableShapes(listing);
  std::string commands;
  for (const TableRules& table : wanted) {
    const auto found = present.find(table.name);
    commands += ChangeTable(table, found == present.end() ? nullptr : &found->second);
  }
  return Session().Run(commands);
}

std::vector<TableRules> PacketGate::AllRules(const Closed& closed) {
  std::vector<TableRules> tables = FrameRules(closed.links, closed.allowLocal, Hooks());
  tables.push_back(PacketRules(closed.links, closed.allowLocal));
  if (!closed.leaseEnd) return tables;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*closed.leaseEnd - Clock::now());
  for (TableRules& table : tables)
    AddLease(table, left);
  return tables;
}

// Replaces all tables in one transaction. When that fails for a gate that closes, at least the
// rules for the machine's own packets are replaced.
std::uint32_t PacketGate::Replace(Closed& closed, std::vector<TableRules>& wanted) {
  closed.links = LinksNow();
  wanted = AllRules(closed);
  if (TryToReplace(wanted) == 0) return 0;
  // Another process may have changed the tables meanwhile, an interface may have gone, or the
  // session has lost the socket that owns the tables. A new session can take them over.
  session_.reset();
  closed.links = LinksNow();
  wanted = AllRules(closed);
  std::uint32_t error = TryToReplace(wanted);
  if (error != 0 && !closed.leaseEnd) {
    Failed("the gate stays open for frames", error, Session().Error());
    wanted = {PacketRules(closed.links, closed.allowLocal)};
    error = TryToReplace(wanted);
  }
  return error == 0 ? 0 : Failed("the gate stays as it is", error, Session().Error());
}

std::uint32_t PacketGate::Block() {
  const std::lock_guard lock(mutex_);
  held_ = false;
  passIsDue_ = false;
  if (!closed_ || IsOnLease() || closed_->allowLocal != allowLocal_) return Close(allowLocal_, {});
  std::vector<std::string> present;
  const std::uint32_t error = ReadNames(present);
  return error != 0 ? error : PutBackIfChanged(true);
}

std::uint32_t PacketGate::Close(bool allowLocal, Deadline leaseEnd) {
  // Without access this fails at once, and with one line in the log.
  std::vector<std::string> present;
  std::uint32_t error = ReadNames(present);
  if (error != 0) return error;
  Closed closed{.allowLocal = allowLocal, .leaseEnd = leaseEnd};
  std::vector<TableRules> wanted;
  error = Replace(closed, wanted);
  if (error != 0) {
    RemoveEmptyTables();
    return error;
  }
  closed_ = closed;
  // Read before the rules are read back: any later change by others has a higher number.
  const std::uint32_t generation = FilterGeneration();
  error = ReadBack(wanted);
  if (error != 0) return error;
  closed_->generation = generation;
  WarnOfFlowTables();
  return 0;
}

std::uint32_t PacketGate::AllowLocal(bool allow) {
  const std::lock_guard lock(mutex_);
  allowLocal_ = allow;
  if (closed_ && closed_->allowLocal == allow) return 0;
  std::vector<std::string> present;
  const std::uint32_t error = ReadNames(present);
  if (error != 0 || present.empty()) return error;
  return Close(allow, IsOnLease() ? closed_->leaseEnd : Deadline());
}

std::uint32_t PacketGate::Repair(bool linksChanged) {
  const std::lock_guard lock(mutex_);
  return closed_ ? PutBackIfChanged(linksChanged) : 0;
}

std::uint32_t PacketGate::PutBackIfChanged(bool linksChanged) {
  const std::uint32_t generation = FilterGeneration();
  if (generation == closed_->generation && !linksChanged) return 0;
  std::string listing;
  const std::uint32_t error = ReadListing(listing);
  if (error != 0) return error;
  const bool sameLinks = LinksNow() == closed_->links;
  if (listing == closed_->listing && sameLinks) {
    closed_->generation = generation;
    return 0;
  }
  // Some kernels remove an interface's chains together with the interface.
  const bool byOthers = sameLinks ? listing != closed_->listing
                                  : ReadTableShapes(listing)[kTableName] !=
                                        ReadTableShapes(closed_->listing)[kTableName];
  return PutBack(byOthers);
}

std::uint32_t PacketGate::PutBack(bool byOthers) {
  const std::uint32_t error = Close(closed_->allowLocal, closed_->leaseEnd);
  if (!byOthers) return error;
  report_(error == 0 ? "Another program changed the gate's rules in the packet filter. "
                       "They have been put back."
                     : "Another program changed the gate's rules in the packet filter. "
                       "They could not be put back. Error=" +
                           std::to_string(error));
  return error;
}

}  // namespace quillgate::gate
