// The gate of the whole machine. Its state is in the kernel alone: it outlives this object and the
// process, and what this object needs to know about it, it asks. Any thread of one network
// namespace; the operations wait for each other.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "frame_rules.h"
#include "nft_session.h"
#include "ruleset.h"

namespace quillgate::gate {

// Every operation answers 0 or a Win32 error, and writes a line about the error. After an error the
// gate is as it was before; only ERROR_INVALID_DATA says that the kernel took the change and holds
// something else all the same.
class PacketGate {
 public:
  using Write = std::function<void(const std::string&)>;

  // `log` gets lines for whoever looks for a fault, `report` what the administrator should know.
  //
  // A gate that is found closed is held: whoever closed it was killed, and the first thing that a
  // starting program does is to let everything pass, before it knows what has been decided about
  // the user.
  PacketGate(Write log, Write report);

  // Whether the gate can be worked from this process.
  std::uint32_t Open();

  // Everything passes: there is no table. On a gate that is held, the first one succeeds and takes
  // effect only with Leave, unless a decision follows: a Block or another Pass.
  std::uint32_t Pass();

  // Nothing passes but what keeps the link alive, and local traffic if it was allowed last. Takes
  // the machine's addresses as they are now. A gate that is closed already is asserted: what others
  // have changed of it is put back.
  std::uint32_t Block();

  // Whether local traffic passes while blocked; blocked at first. Takes effect at once on a gate
  // that is closed, and is remembered for the next Block even when that fails.
  std::uint32_t AllowLocal(bool allow);

  // To be called after changes of the packet filter or of the machine's links: a gate that should
  // be closed is put back, with a report if others have changed it, and takes the new links.
  std::uint32_t Repair(bool linksChanged);

  // The end in order. What is closed stays closed, unless a Pass was asked for last that was kept
  // back.
  void Leave();

 private:
  using Tables = std::map<std::string, TableShape>;

  // What a closed gate is made of, and how the kernel tells of it.
  struct Closed {
    bool allowLocal = false;
    MachineLinks links{};
    std::uint32_t generation = 0;
    std::string listing{};
  };

  void TakeOver();
  std::uint32_t Close(bool allowLocal);
  std::uint32_t Replace(Closed& closed, std::vector<TableRules>& wanted);
  std::uint32_t TryToReplace(const std::vector<TableRules>& wanted);
  std::vector<TableRules> AllRules(const Closed& closed);
  const FrameHooks& Hooks();
  std::uint32_t ReadBack(const std::vector<TableRules>& wanted);
  std::uint32_t RemoveTables();
  void RemoveEmptyTables();
  std::uint32_t ReadNames(std::vector<std::string>& present);
  std::uint32_t ReadListing(std::string& listing);
  std::uint32_t PutBackIfChanged(bool linksChanged);
  std::uint32_t PutBack(bool byOthers);
  void OwnTables(const std::vector<TableRules>& tables);
  void WarnOfFlowTables();
  MachineLinks LinksNow();
  std::uint32_t Failed(const char* what, std::uint32_t error, const std::string& reason);
  NftSession& Session();

  std::mutex mutex_;
  Write log_;
  Write report_;
  std::optional<NftSession> session_;
  std::optional<bool> canOwn_;       // once it has been tried
  std::optional<FrameHooks> hooks_;  // likewise
  MachineLinks links_;               // as they were read last
  bool held_ = false;
  bool passIsDue_ = false;  // if it ends in order before a decision
  bool allowLocal_ = false;
  std::optional<Closed> closed_;  // while the gate is to be closed
};

}  // namespace quillgate::gate
