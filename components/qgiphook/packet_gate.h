// The gate of the whole machine. Its state is in the kernel alone: it outlives this object and the
// process, and what this object needs to know about it, it asks. Used by one thread at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "nft_session.h"
#include "ruleset.h"

namespace quillgate::gate {

// Every operation answers 0 or a Win32 error, and writes a line about the error. After an error the
// gate is as it was before; only ERROR_INVALID_DATA says that the kernel took the change and holds
// something else all the same.
class PacketGate {
 public:
  using Log = std::function<void(const std::string&)>;
  explicit PacketGate(Log log) : log_(std::move(log)) {}

  // Whether the gate can be worked from this process.
  std::uint32_t Open();

  // Everything passes: there is no table.
  std::uint32_t Pass();

  // Nothing passes but what keeps the link alive, and local traffic if it was allowed last. Takes
  // the machine's addresses as they are now.
  std::uint32_t Block();

  // Whether local traffic passes while blocked; blocked at first. Takes effect at once on a gate
  // that is closed, and is remembered for the next Block even when that fails.
  std::uint32_t AllowLocal(bool allow);

 private:
  using Tables = std::map<std::string, TableShape>;

  std::uint32_t ReadNames(std::vector<std::string>& present);
  std::uint32_t ReadTables(Tables& tables);
  std::uint32_t Replace(const std::vector<TableRules>& wanted);
  std::uint32_t ReadBack(const std::vector<TableRules>& wanted);
  void WarnOfFlowTables();
  MachineLinks LinksNow();
  std::uint32_t Failed(const char* what, std::uint32_t error, const std::string& reason);
  NftSession& Session();

  Log log_;
  std::optional<NftSession> session_;
  MachineLinks links_;  // as they were read last
  bool allowLocal_ = false;
  std::optional<bool> localInForce_;  // of a gate that this object closed
};

}  // namespace quillgate::gate
