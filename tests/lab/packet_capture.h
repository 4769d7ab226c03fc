// What arrives at one interface, seen before any packet filter of that side. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "lab/file_descriptor.h"
#include "lab/network_namespace.h"

namespace lab {

struct Packet {
  int family = 0;    // AF_INET or AF_INET6
  int protocol = 0;  // IPPROTO_..., of the first header after IP's own
  std::string source{};
  std::string destination{};
  int type = -1;  // of an ICMP or ICMPv6 message
};

// The one that packets are counted by; empty texts and zeros match everything.
struct PacketFilter {
  int protocol = 0;
  std::string source{};
  std::string destination{};
  int type = -1;
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
  std::size_t Count(const PacketFilter& filter) const;
  const std::vector<Packet>& Packets() const { return packets_; }

 private:
  // Whether it was a mark.
  bool Keep(const std::vector<std::uint8_t>& bytes, std::uint16_t etherType);

  FileDescriptor socket_;
  int index_ = 0;
  std::vector<Packet> packets_;
};

}  // namespace lab
