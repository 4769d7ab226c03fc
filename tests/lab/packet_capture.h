// What arrives at one interface, seen before any packet filter of that side. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lab/network_namespace.h"

namespace lab {

// As it was seen, or as it is looked for: empty texts, no protocol and no type match everything.
struct Packet {
  int protocol = 0;  // IPPROTO_..., of the first header after IP's own
  std::string source{};
  std::string destination{};
  int type = -1;  // of an ICMP or ICMPv6 message
};

class PacketCapture {
 public:
  PacketCapture(const NetworkNamespace& place, const std::string& interfaceName);

  // Forgets what was seen.
  void Clear() { packets_.clear(); }

  // Puts a mark of no protocol that exists on the wire, out of this interface.
  void SendMark();

  // Reads what arrived, until a mark does: everything that was sent before it has been seen then.
  // False when none comes within ten seconds.
  bool ReadToMark();

  // The packets seen since Clear, as far as they have been read.
  std::size_t Count(const Packet& wanted) const;

 private:
  FileDescriptor socket_;
  int index_ = 0;
  std::vector<Packet> packets_;
};

}  // namespace lab
