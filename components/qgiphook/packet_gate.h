// The gate of the whole machine. Its state is in the kernel only, outlives this object and the
// process, and is queried when needed. Any thread of one network namespace; operations are
// serialized.
#pragma once

#include <chrono>
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

enum class GateState { kOpen, kOnLease, kClosed };

// An open gate has no rules, or is on a lease: it closes by itself unless it is opened again in
// time, and so does not outlive for long a program that was killed.
//
// Every operation returns 0 or a Win32 error, and logs the error. After an error the gate is as it
// was before. The exception is ERROR_INVALID_DATA: the kernel accepted the change, but holds other
// rules.
class PacketGate {
 public:
  using Write = std::function<void(const std::string&)>;

  // The length of a lease; 0: open without one.
  using Lease = std::function<std::chrono::milliseconds()>;

  // `log` receives lines for diagnosis, `report` messages for the administrator. `lease` is asked
  // at each Pass.
  PacketGate(Write log, Write report, Lease lease);

  // To be called when the driver is loaded. A gate that is found closed or on a lease is held: the
  // process that switched it was killed. A program that starts begins with Pass, before it knows
  // the decision about the user, so the first Pass is postponed, and a lease goes on to its end.
  void TakeOver();

  // Reads the state that the kernel has, whoever has set it.
  std::uint32_t ReadState(GateState& state);

  // Whether this process can operate the gate.
  std::uint32_t Open();

  // Lets everything pass: removes the tables, or begins a lease or renews it. On a held gate the
  // first call succeeds and takes effect only in Leave, unless a decision follows: a Block or
  // another Pass.
  std::uint32_t Pass();

  // Blocks everything except the traffic that keeps the link alive and, if AllowLocal was last
  // called with true, local traffic. Uses the machine's present addresses. A gate that is closed
  // already is checked, and changes by others are undone.
  std::uint32_t Block();

  // Sets whether local traffic passes while blocked, or after the end of a lease; false at first.
  // Takes effect at once on a closed gate, and is remembered for the next Block even when that
  // fails. Closes a gate whose lease is held.
  std::uint32_t AllowLocal(bool allow);

  // To be called after changes of the packet filter or of the machine's links. Restores a gate that
  // should be closed, with a report when others have changed it, and applies the new links.
  std::uint32_t Repair(bool linksChanged);

  // To be called when the driver is unloaded in order. A closed gate stays closed, unless the last
  // call was a Pass that was postponed. A lease becomes an open gate without one.
  void Leave();

 private:
  using Tables = std::map<std::string, TableShape>;
  using Clock = std::chrono::steady_clock;
  using Deadline = std::optional<Clock::time_point>;

  // The parameters of a closed gate, and how the kernel lists it. A gate on a lease is a closed one
  // with an exception.
  struct Closed {
    bool allowLocal = false;
    Deadline leaseEnd{};  // null: without a lease
    MachineLinks links{};
    std::uint32_t generation = 0;
    std::string listing{};
  };

  GateState StateOf(const std::string& listing);
  bool IsOnLease() const { return closed_ && closed_->leaseEnd; }
  std::uint32_t Close(bool allowLocal, Deadline leaseEnd);
  std::uint32_t OpenFor(std::chrono::milliseconds length);
  std::uint32_t Renew(std::chrono::milliseconds length);
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
  Lease lease_;
  std::optional<NftSession> session_;
  std::optional<bool> canOwn_;       // null: not yet tried
  std::optional<FrameHooks> hooks_;  // null: not yet tried
  MachineLinks links_;               // as last read
  bool held_ = false;
  bool passIsDue_ = false;  // at Leave, unless a decision comes first
  bool allowLocal_ = false;
  std::optional<Closed> closed_;  // while the gate is to be closed, or is on a lease
};

}  // namespace quillgate::gate
