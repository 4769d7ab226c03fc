// Three machines in network namespaces: a client in the home network, the host that everything
// passes through, and the Internet, of which one router and one server are enough. The host reaches
// the Internet by itself and forwards for the client. One thread, which stays on one processor
// while the lab lives, so that packets arrive in the order in which they were sent.
//
//   client 192.168.50.2 --- home0 host wan0 --- 198.51.100.1 router, server 203.0.113.10
//          fd50::2          192.168.50.1        2001:db8:1::1        2001:db8:ffff::10
//                           198.51.100.2, 2001:db8:1::2
// On the outer link the host is fe80::2 and the router fe80::1 as well.
#pragma once

#include <sched.h>

#include "lab/network_namespace.h"
#include "lab/packet_capture.h"

namespace lab {

// The addresses of one IP version.
struct Addresses {
  const char* client;
  const char* hostInside;
  const char* hostOutside;
  const char* router;
  const char* server;
};
inline constexpr Addresses kIp4{"192.168.50.2", "192.168.50.1", "198.51.100.2", "198.51.100.1",
                                "203.0.113.10"};
inline constexpr Addresses kIp6{"fd50::2", "fd50::1", "2001:db8:1::2", "2001:db8:1::1",
                                "2001:db8:ffff::10"};

class NetworkLab {
 public:
  static constexpr const char* kHostInside = "home0";
  static constexpr const char* kHostOutside = "wan0";

  // Throws when the namespaces or what they need cannot be had; ask NetworkNamespace::WhyNot first.
  NetworkLab();
  ~NetworkLab();
  NetworkLab(const NetworkLab&) = delete;
  NetworkLab& operator=(const NetworkLab&) = delete;

  const NetworkNamespace& Client() const { return client_; }
  const NetworkNamespace& Host() const { return host_; }
  const NetworkNamespace& Internet() const { return internet_; }

  // What arrived from the host at the other two since the last call of Forget, as far as it was
  // sent before the last call of Settle.
  const PacketCapture& AtInternet() const { return atInternet_; }
  const PacketCapture& AtClient() const { return atClient_; }

  // Forgets the packets seen so far, those on their way included.
  void Forget();

  // Waits until every packet that was sent before has arrived or is lost; throws
  // std::runtime_error when the links do not carry anything.
  void Settle();

 private:
  cpu_set_t processors_;  // those of the thread before
  NetworkNamespace client_;
  NetworkNamespace host_;
  NetworkNamespace internet_;
  bool built_;
  PacketCapture atClient_;
  PacketCapture atHostInside_;
  PacketCapture atHostOutside_;
  PacketCapture atInternet_;
};

}  // namespace lab
