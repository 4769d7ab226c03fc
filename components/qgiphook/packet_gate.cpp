#include "packet_gate.h"

#include <sys/socket.h>
#include <winerror.h>

#include <system_error>

#include "interface_addresses.h"
#include "local_networks.h"

namespace quillgate::gate {

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

std::uint32_t PacketGate::ReadPresence(bool& present) {
  const std::uint32_t error = Session().Run("list tables inet");
  if (error != 0) return Failed("the gate cannot be read", error, Session().Error());
  const std::string line = "table " + std::string(kTableName) + "\n";
  present = Session().Output().find(line) != std::string::npos;
  return 0;
}

std::uint32_t PacketGate::ReadShape(TableShape& shape) {
  const std::uint32_t error = Session().Run("list table " + std::string(kTableName));
  if (error != 0) return Failed("the closed gate cannot be read", error, Session().Error());
  shape = ReadTableShape(Session().Output());
  return 0;
}

std::uint32_t PacketGate::ReadBack(const TableShape& wanted) {
  TableShape present;
  const std::uint32_t error = ReadShape(present);
  if (error != 0 || present == wanted) return error;
  return Failed("the gate is not closed as it should be", ERROR_INVALID_DATA,
                "the kernel holds other rules");
}

void PacketGate::WarnOfFlowTables() {
  // The answer of a kernel without flow tables is as good as an empty one.
  if (Session().Run("list flowtables") != 0) return;
  if (Session().Output().find("flowtable ") == std::string::npos) return;
  log_("a flow table forwards connections past the closed gate");
}

// Not to know the connected subnets is no reason to leave the gate open: it closes without them.
std::vector<NetworkPrefix> PacketGate::UnicastNow(int family) {
  try {
    return LocalUnicast(family, ConnectedPrefixes(family));
  } catch (const std::system_error& failure) {
    log_(std::string("the connected subnets stay blocked: ") + failure.what());
    return LocalUnicast(family, {});
  }
}

Ruleset PacketGate::ClosedGateNow() {
  if (!allowLocal_) return ClosedGate(nullptr);
  const LocalTraffic local{.unicast4 = UnicastNow(AF_INET),
                           .unicast6 = UnicastNow(AF_INET6),
                           .groups4 = LocalGroups(AF_INET),
                           .groups6 = LocalGroups(AF_INET6)};
  return ClosedGate(&local);
}

std::uint32_t PacketGate::Pass() {
  const std::uint32_t error = Session().Run(OpenGateCommands());
  if (error != 0) return Failed("the gate stays as it is", error, Session().Error());
  localInForce_.reset();
  bool present = false;
  const std::uint32_t readError = ReadPresence(present);
  if (readError != 0 || !present) return readError;
  return Failed("the gate is not open", ERROR_INVALID_DATA, "the kernel still holds the rules");
}

std::uint32_t PacketGate::Replace(const Ruleset& closed) {
  bool isPresent = false;
  TableShape present;
  std::uint32_t error = ReadPresence(isPresent);
  if (error == 0 && isPresent) error = ReadShape(present);
  if (error != 0) return error;
  const bool keepChains = isPresent && CanKeepChains(present, closed.shape);
  error = Session().Run(keepChains ? closed.replaceRules : closed.replaceTable);
  return error == 0 ? 0 : Failed("the gate stays as it is", error, Session().Error());
}

std::uint32_t PacketGate::Block() {
  const Ruleset closed = ClosedGateNow();
  std::uint32_t error = Replace(closed);
  if (error != 0) return error;
  localInForce_ = allowLocal_;
  error = ReadBack(closed.shape);
  if (error == 0) WarnOfFlowTables();
  return error;
}

std::uint32_t PacketGate::AllowLocal(bool allow) {
  allowLocal_ = allow;
  bool closed = false;
  const std::uint32_t error = ReadPresence(closed);
  if (error != 0 || !closed || localInForce_ == allow) return error;
  return Block();
}

}  // namespace quillgate::gate
