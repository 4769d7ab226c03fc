// Two ends that talk over TCP, UDP or ICMP, the second one being the server. One thread.
#pragma once

#include <netinet/in.h>

#include <cstdint>
#include <string>

#include "lab/network_namespace.h"

namespace lab {

enum class Protocol { kTcp, kUdp, kIcmp };
inline constexpr Protocol kProtocols[] = {Protocol::kTcp, Protocol::kUdp, Protocol::kIcmp};

struct End {
  const NetworkNamespace* place;
  std::string address;
};

class Conversation {
 public:
  Conversation(Protocol protocol, const End& from, const End& to);

  // Sends the first packet, whatever becomes of it.
  void Begin();
  // Begins, and waits until both ends have heard of each other; false after ten seconds.
  bool Establish();

  // One message each, whatever becomes of it.
  void SendForth() { Send(client_.Get()); }
  void SendBack() { Send(server_.Get()); }

  // The messages (TCP: bytes) that arrived since the last call; reads them.
  int TakeForth() { return Take(server_.Get()); }
  int TakeBack() { return Take(client_.Get()); }

  // IPPROTO_..., as packets of this conversation carry it.
  int IpProtocol() const;

 private:
  FileDescriptor BoundSocket(const End& end) const;
  void Send(int socket);
  int Take(int socket) const;
  bool IsOurs(const std::uint8_t* bytes, std::size_t size) const;

  Protocol protocol_;
  int family_;
  sockaddr_storage serverAddress_{};
  FileDescriptor listener_;
  FileDescriptor client_;
  FileDescriptor server_;
  std::uint16_t echoId_ = 0;
};

}  // namespace lab
