#include "system/crossings.h"

#include <sched.h>

#include <cstring>
#include <stdexcept>

#include "lab/raw_packet.h"

namespace leaks {

using lab::Conversation;
using lab::kIp4;
using lab::kIp6;

Crossings::Crossings(lab::NetworkLab& machines) : lab_(machines) {
  constexpr const char* kNames[] = {"TCP", "UDP", "ICMP"};
  for (const lab::Addresses* ip : {&kIp4, &kIp6}) {
    for (const lab::Protocol protocol : lab::kProtocols) {
      const std::string name = kNames[static_cast<int>(protocol)];
      Kind& kind = kinds_.emplace_back(Kind{.name = name + (ip == &kIp4 ? "/IPv4 " : "/IPv6 "),
                                            .ip = *ip,
                                            .protocol = protocol,
                                            .host = {&lab_.Host(), ip->hostOutside},
                                            .client = {&lab_.Client(), ip->client},
                                            .server = {&lab_.Internet(), ip->server}});
      if (!kind.hostRuns.Establish() || !kind.clientRuns.Establish()) {
        throw std::runtime_error("not established: " + kind.name);
      }
    }
  }
}

std::map<std::string, std::size_t> Crossings::Try() {
  Across across;
  for (Kind& kind : kinds_) {
    TryRunning(kind, across);
    TryNew(kind, across);
  }
  return across;
}

std::size_t Crossings::Sent(Conversation& talk, Sending send, const char* from, const char* to) {
  lab_.Forget();
  (talk.*send)();
  lab_.Settle();
  const lab::Packet sent{.protocol = talk.IpProtocol(), .source = from, .destination = to};
  return lab_.AtInternet().Count(sent) + lab_.AtClient().Count(sent);
}

void Crossings::TryRunning(Kind& kind, Across& across) {
  const auto& [client, inside, host, router, server] = kind.ip;
  const auto forth = &Conversation::SendForth;
  across[kind.name + "running, out of the host"] = Sent(kind.hostRuns, forth, host, server);
  across[kind.name + "running, out of the client"] = Sent(kind.clientRuns, forth, client, server);
  across[kind.name + "running, into the client"] =
      Sent(kind.clientRuns, &Conversation::SendBack, server, client);
  // What the host received tells of the way in; an answer would tell of the way out as well.
  kind.hostRuns.TakeBack();
  kind.hostRuns.SendBack();
  lab_.Settle();
  across[kind.name + "running, into the host"] = static_cast<std::size_t>(kind.hostRuns.TakeBack());
}

void Crossings::TryNew(const Kind& kind, Across& across) {
  const auto& [client, inside, host, router, server] = kind.ip;
  const auto begin = &Conversation::Begin;
  Conversation outOfHost(kind.protocol, kind.host, kind.server);
  across[kind.name + "new, out of the host"] = Sent(outOfHost, begin, host, server);
  Conversation outOfClient(kind.protocol, kind.client, kind.server);
  across[kind.name + "new, out of the client"] = Sent(outOfClient, begin, client, server);
  Conversation intoClient(kind.protocol, kind.server, kind.client);
  across[kind.name + "new, into the client"] = Sent(intoClient, begin, server, client);
  lab::RawListener atHost(lab_.Host(), server, outOfHost.IpProtocol());
  Conversation intoHost(kind.protocol, kind.server, kind.host);
  intoHost.Begin();
  lab_.Settle();
  across[kind.name + "new, into the host"] = static_cast<std::size_t>(atHost.Take());
}

Flood::Flood(lab::NetworkLab& machines)
    : lab_(machines),
      talk_(lab::Protocol::kUdp, {&lab_.Host(), kIp4.hostOutside},
            {&lab_.Internet(), kIp4.server}) {
  if (!talk_.Establish()) throw std::runtime_error("the server cannot be reached");
}

void Flood::Begin(std::chrono::microseconds pause) {
  sender_ = std::jthread([this, pause](const std::stop_token& stop) {
    cpu_set_t all;
    std::memset(&all, 0xff, sizeof all);
    ::sched_setaffinity(0, sizeof all, &all);
    for (; !stop.stop_requested(); ++sent_) {
      talk_.SendForth();
      std::this_thread::sleep_for(pause);
    }
  });
}

std::size_t Flood::Arrived() {
  lab_.Settle();
  return lab_.AtInternet().Count({.destination = kIp4.server});
}

}  // namespace leaks
