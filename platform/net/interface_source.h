// What the machine's network interfaces are and have counted. Linux answers through rtnetlink; the
// simulated machine answers from data. Everything of the net family and the registry's network-card
// keys is made from it. Any thread.
#pragma once

#include <windef.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct AddressAndMask {
  std::string address;  // dotted decimal
  std::string mask;
};

struct InterfaceCounters {
  std::uint64_t bytesReceived = 0;
  std::uint64_t bytesSent = 0;
  std::uint64_t packetsReceived = 0;
  std::uint64_t packetsSent = 0;
};

struct NetworkInterface {
  std::uint32_t index = 0;
  std::wstring name;         // the kernel's name, which is the service name of the card
  std::wstring description;  // for people
  std::vector<BYTE> physicalAddress;
  std::uint32_t type = 6;  // as MIB_IFROW counts types; 6 is Ethernet
  std::uint32_t mtu = 1500;
  std::uint64_t bitsPerSecond = 0;
  bool up = false;
  bool isCard = true;  // listed among the installed network cards
  bool dhcp = false;
  std::vector<AddressAndMask> addresses;
  std::vector<std::string> gateways;
  std::vector<std::string> nameServers;
  InterfaceCounters counters;
};

class InterfaceSource {
 public:
  virtual ~InterfaceSource() = default;

  // All interfaces; cards first in the order in which they are to be offered (the one with the
  // default route before the others).
  virtual std::vector<NetworkInterface> List() = 0;

  // Fresh counters of one interface; nothing when there is no such interface.
  virtual std::optional<InterfaceCounters> Counters(std::wstring_view name) = 0;
};

InterfaceSource& CurrentInterfaces();

// Puts another source in place, or the kernel's with null; the caller keeps it alive.
void SetInterfaceSource(InterfaceSource* source);

}  // namespace platform
