#include "system/crossings.h"

#include "lab/raw_packet.h"

namespace leaks {

using lab::Conversation;

Crossings::Crossings(lab::NetworkLab& machines, const lab::Addresses& ip, lab::Protocol protocol)
    : lab_(machines),
      ip_(ip),
      protocol_(protocol),
      hostRuns_(protocol, ip.family, Host(), Server()),
      clientRuns_(protocol, ip.family, Client(), Server()) {}

bool Crossings::Establish() {
  return hostRuns_.Establish() && clientRuns_.Establish();
}

std::map<std::string, std::size_t> Crossings::Try() {
  Across across;
  TryRunning(across);
  TryNew(across);
  return across;
}

std::size_t Crossings::Sent(Conversation& conversation, Sending send,
                            const lab::PacketCapture& capture, const char* from, const char* to) {
  lab_.Forget();
  (conversation.*send)();
  lab_.Settle();
  return capture.Count({.protocol = conversation.IpProtocol(), .source = from, .destination = to});
}

void Crossings::TryRunning(Across& across) {
  across["running, out of the host"] =
      Sent(hostRuns_, &Conversation::SendForth, lab_.AtInternet(), ip_.hostOutside, ip_.server);
  across["running, out of the client"] =
      Sent(clientRuns_, &Conversation::SendForth, lab_.AtInternet(), ip_.client, ip_.server);
  across["running, into the client"] =
      Sent(clientRuns_, &Conversation::SendBack, lab_.AtClient(), ip_.server, ip_.client);
  // What the host received tells of the way in; an answer would tell of the way out as well.
  hostRuns_.TakeBack();
  hostRuns_.SendBack();
  lab_.Settle();
  across["running, into the host"] = static_cast<std::size_t>(hostRuns_.TakeBack());
}

void Crossings::TryNew(Across& across) {
  const int family = ip_.family;
  Conversation outOfHost(protocol_, family, Host(), Server());
  across["new, out of the host"] =
      Sent(outOfHost, &Conversation::Begin, lab_.AtInternet(), ip_.hostOutside, ip_.server);
  Conversation outOfClient(protocol_, family, Client(), Server());
  across["new, out of the client"] =
      Sent(outOfClient, &Conversation::Begin, lab_.AtInternet(), ip_.client, ip_.server);
  Conversation intoClient(protocol_, family, Server(), Client());
  across["new, into the client"] =
      Sent(intoClient, &Conversation::Begin, lab_.AtClient(), ip_.server, ip_.client);
  lab::RawListener atHost(lab_.Host(), family, outOfHost.IpProtocol());
  Conversation intoHost(protocol_, family, Server(), Host());
  intoHost.Begin();
  lab_.Settle();
  across["new, into the host"] = static_cast<std::size_t>(atHost.Take(ip_.server));
}

}  // namespace leaks
