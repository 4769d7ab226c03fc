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
  // A gate that is found closed is held: whoever closed it was killed, and the program that starts
  // now lets everything pass until it knows what has been decided about the user.
  explicit PacketGate(Log log);

  // Whether the gate can be worked from this process.
  std::uint32_t Open();

  // Everything passes: there is no table. On a gate that is held this succeeds and takes effect
  // only with Leave; the first Block ends that.
  std::uint32_t Pass();

  // Nothing passes but what keeps the link alive, and local traffic if it was allowed last. Takes
  // the machine's addresses as they are now.
  std::uint32_t Block();

  // Whether local traffic passes while blocked; blocked at first. Takes effect at once on a gate
  // that is closed, and is remembered for the next Block even when that fails.
  std::uint32_t AllowLocal(bool allow);

  // The end in order. What is closed stays closed, unless a Pass was asked for last that a hold
  // kept back.
  void Leave();

 private:
  using Tables = std::map<std::string, TableShape>;

  std::uint32_t Close();
  std::uint32_t RemoveTables();
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
  bool held_ = false;
  bool passIsDue_ = false;  // once the hold ends in order
  bool allowLocal_ = false;
  std::optional<bool> localInForce_;  // of a gate that this object closed
};

}  // namespace quillgate::gate
