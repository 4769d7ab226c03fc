// The machine's network interfaces and their counters: from rtnetlink, or from the data of the
// simulated machine. The net family and the registry's network-card keys are built on it. Any
// thread.
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
  std::wstring description;  // to be displayed
  std::vector<BYTE> physicalAddress;
  std::uint32_t type = 6;  // as in MIB_IFROW; 6 is Ethernet
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

  // All interfaces, cards first. Cards are in the order in which a program shall offer them: the
  // one with the default route comes first.
  virtual std::vector<NetworkInterface> List() = 0;

  // The current counters of one interface; nothing when it does not exist or cannot be read.
  virtual std::optional<InterfaceCounters> Counters(std::wstring_view name) = 0;
};

InterfaceSource& CurrentInterfaces();

// Sets another source; null: the kernel's. The caller keeps it alive.
void SetInterfaceSource(InterfaceSource* source);

}  // namespace platform
