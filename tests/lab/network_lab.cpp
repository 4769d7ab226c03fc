#include "lab/network_lab.h"

#include <stdexcept>

namespace lab {

namespace {

// Without waiting for duplicate addresses, and without chatter of the namespaces' own.
constexpr const char* kQuiet =
    "for s in all default; do"
    " echo 0 > /proc/sys/net/ipv6/conf/$s/accept_dad;"
    " echo 0 > /proc/sys/net/ipv6/conf/$s/router_solicitations; done; "
    "ip link set lo up; ";

bool Build(const NetworkNamespace& client, const NetworkNamespace& host,
           const NetworkNamespace& internet) {
  for (const NetworkNamespace* place : {&client, &host, &internet})
    place->Shell(kQuiet);
  host.Shell("ip link add home0 type veth peer name eth0 netns " + client.Path() +
             " && ip link add wan0 type veth peer name eth0 netns " + internet.Path());
  client.Shell(
      "set -e; ip link set eth0 up; ip addr add 192.168.50.2/24 dev eth0;"
      "ip addr add fd50::2/64 dev eth0 nodad; ip route add default via 192.168.50.1;"
      "ip -6 route add default via fd50::1");
  host.Shell(
      "set -e; ip link set home0 up; ip link set wan0 up;"
      "ip addr add 192.168.50.1/24 dev home0; ip addr add fd50::1/64 dev home0 nodad;"
      "ip addr add 198.51.100.2/24 dev wan0; ip addr add 2001:db8:1::2/64 dev wan0 nodad;"
      "ip addr add fe80::2/64 dev wan0 nodad;"
      "ip route add default via 198.51.100.1; ip -6 route add default via 2001:db8:1::1;"
      "echo 1 > /proc/sys/net/ipv4/ip_forward; echo 1 > /proc/sys/net/ipv6/conf/all/forwarding");
  internet.Shell(
      "set -e; ip link set eth0 up;"
      "ip addr add 198.51.100.1/24 dev eth0; ip addr add 2001:db8:1::1/64 dev eth0 nodad;"
      "ip addr add fe80::1/64 dev eth0 nodad;"
      "ip addr add 203.0.113.10/32 dev lo; ip addr add 2001:db8:ffff::10/128 dev lo nodad;"
      "ip route add 192.168.50.0/24 via 198.51.100.2;"
      "ip -6 route add fd50::/64 via 2001:db8:1::2;"
      "echo 1 > /proc/sys/net/ipv4/ip_forward; echo 1 > /proc/sys/net/ipv6/conf/all/forwarding");
  return true;
}

// Keeps the thread where it runs; where it could run before.
cpu_set_t StayOnOneProcessor() {
  cpu_set_t before;
  ::sched_getaffinity(0, sizeof before, &before);
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(static_cast<std::size_t>(::sched_getcpu()), &one);
  ::sched_setaffinity(0, sizeof one, &one);
  return before;
}

void Pass(PacketCapture& from, PacketCapture& to) {
  from.SendMark();
  if (!to.ReadToMark()) throw std::runtime_error("a link of the lab carries nothing");
}

}  // namespace

NetworkLab::NetworkLab()
    : processors_(StayOnOneProcessor()),
      built_(Build(client_, host_, internet_)),
      atClient_(client_, "eth0"),
      atHostInside_(host_, kHostInside),
      atHostOutside_(host_, kHostOutside),
      atInternet_(internet_, "eth0") {
  Settle();
}

NetworkLab::~NetworkLab() {
  ::sched_setaffinity(0, sizeof processors_, &processors_);
}

void NetworkLab::Forget() {
  Settle();
  atClient_.Clear();
  atInternet_.Clear();
}

void NetworkLab::Settle() {
  // What the outer machines sent arrives at the host, which passes it on at once; the marks of the
  // host follow behind it. And once more, for the answers to what was passed on.
  for (int turn = 0; turn < 2; ++turn) {
    Pass(atClient_, atHostInside_);
    Pass(atInternet_, atHostOutside_);
    Pass(atHostOutside_, atInternet_);
    Pass(atHostInside_, atClient_);
  }
  atHostInside_.Clear();
  atHostOutside_.Clear();
}

}  // namespace lab
