#include "packet_gate.h"

#include <winerror.h>

#include <system_error>

namespace quillgate::gate {

namespace {

constexpr const char* kTables[] = {kTableName};

std::string ForEach(const char* verb, const std::vector<std::string>& tables) {
  std::string commands;
  for (const std::string& table : tables)
    commands += std::string(verb) + " table " + table + "\n";
  return commands;
}

}  // namespace

PacketGate::PacketGate(Log log) : log_(std::move(log)) {
  // Without the right to the packet filter there is nothing to hold; whoever opens is told.
  std::vector<std::string> present;
  if (FilterAccess() == 0 && ReadNames(present) == 0) held_ = !present.empty();
}

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

std::uint32_t PacketGate::ReadNames(std::vector<std::string>& present) {
  const std::uint32_t error = Session().Run("list tables");
  if (error != 0) return Failed("the gate cannot be read", error, Session().Error());
  const std::string lines = "\n" + Session().Output();
  present.clear();
  for (const char* table : kTables) {
    if (lines.find("\ntable " + std::string(table) + "\n") != std::string::npos) {
      present.emplace_back(table);
    }
  }
  return 0;
}

std::uint32_t PacketGate::ReadTables(Tables& tables) {
  tables.clear();
  std::vector<std::string> present;
  std::uint32_t error = ReadNames(present);
  if (error != 0 || present.empty()) return error;
  error = Session().Run(ForEach("list", present));
  if (error != 0) return Failed("the closed gate cannot be read", error, Session().Error());
  tables = ReadTableShapes(Session().Output());
  return 0;
}

std::uint32_t PacketGate::ReadBack(const std::vector<TableRules>& wanted) {
  Tables present;
  const std::uint32_t error = ReadTables(present);
  if (error != 0) return error;
  for (const TableRules& table : wanted) {
    const auto found = present.find(table.name);
    if (found != present.end() && found->second == ShapeOf(table)) continue;
    return Failed("the gate is not closed as it should be", ERROR_INVALID_DATA,
                  "the kernel holds other rules");
  }
  return 0;
}

void PacketGate::WarnOfFlowTables() {
  // The answer of a kernel without flow tables is as good as an empty one.
  if (Session().Run("list flowtables") != 0) return;
  if (Session().Output().find("flowtable ") == std::string::npos) return;
  log_("a flow table forwards connections past the closed gate");
}

// Not to know the connected subnets is no reason to leave the gate open: it closes with those that
// were known last.
MachineLinks PacketGate::LinksNow() {
  try {
    links_ = ReadMachineLinks();
  } catch (const std::system_error& failure) {
    log_(std::string("the connected subnets cannot be read: ") + failure.what());
  }
  return links_;
}

std::uint32_t PacketGate::Pass() {
  passIsDue_ = held_;
  return held_ ? 0 : RemoveTables();
}

void PacketGate::Leave() {
  if (passIsDue_) RemoveTables();
}

std::uint32_t PacketGate::RemoveTables() {
  std::vector<std::string> present;
  std::uint32_t error = ReadNames(present);
  if (error != 0) return error;
  if (!present.empty()) error = Session().Run(ForEach("delete", present));
  if (error != 0) return Failed("the gate stays as it is", error, Session().Error());
  localInForce_.reset();
  error = ReadNames(present);
  if (error != 0 || present.empty()) return error;
  return Failed("the gate is not open", ERROR_INVALID_DATA, "the kernel still holds the rules");
}

std::uint32_t PacketGate::Replace(const std::vector<TableRules>& wanted) {
  Tables present;
  std::uint32_t error = ReadTables(present);
  if (error != 0) return error;
  std::string commands;
  for (const TableRules& table : wanted) {
    const auto found = present.find(table.name);
    commands += ChangeTable(table, found == present.end() ? nullptr : &found->second);
  }
  error = Session().Run(commands);
  return error == 0 ? 0 : Failed("the gate stays as it is", error, Session().Error());
}

std::uint32_t PacketGate::Block() {
  held_ = false;
  passIsDue_ = false;
  return Close();
}

std::uint32_t PacketGate::Close() {
  const std::vector<TableRules> closed = {PacketRules(LinksNow(), allowLocal_)};
  std::uint32_t error = Replace(closed);
  if (error != 0) return error;
  localInForce_ = allowLocal_;
  error = ReadBack(closed);
  if (error == 0) WarnOfFlowTables();
  return error;
}

std::uint32_t PacketGate::AllowLocal(bool allow) {
  allowLocal_ = allow;
  std::vector<std::string> present;
  const std::uint32_t error = ReadNames(present);
  if (error != 0 || present.empty() || localInForce_ == allow) return error;
  return Close();
}

}  // namespace quillgate::gate
