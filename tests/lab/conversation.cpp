#include "lab/conversation.h"

#include <netinet/icmp6.h>
#include <netinet/ip_icmp.h>
#include <netinet/tcp.h>
#include <poll.h>

#include <cstring>

#include "lab/raw_packet.h"
#include "lab/socket_address.h"

namespace lab {

namespace {

constexpr int kWaitMilliseconds = 10000;

sockaddr_storage AddressOf(const FileDescriptor& socket) {
  sockaddr_storage address{};
  socklen_t bytes = sizeof address;
  if (::getsockname(socket.Get(), reinterpret_cast<sockaddr*>(&address), &bytes) != 0) {
    ThrowError("getsockname");
  }
  return address;
}

// Each message is a packet of its own, however many are on their way.
void SendAtOnce(const FileDescriptor& socket) {
  const int on = 1;
  ::setsockopt(socket.Get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void Connect(const FileDescriptor& socket, const sockaddr_storage& to) {
  if (::connect(socket.Get(), Plain(to), sizeof to) == 0) return;
  if (errno != EINPROGRESS && errno != EPERM) ThrowError("connect");
}

bool CanRead(const FileDescriptor& socket) {
  pollfd waiting{socket.Get(), POLLIN, 0};
  return ::poll(&waiting, 1, kWaitMilliseconds) == 1;
}

// The kernel computes the checksum of ICMPv6 itself.
Bytes Echo(int family, std::uint16_t id) {
  Bytes message(16);
  message[0] = family == AF_INET ? ICMP_ECHO : ICMP6_ECHO_REQUEST;
  std::memcpy(&message[4], &id, sizeof id);
  const std::uint16_t checksum = Checksum(message);
  std::memcpy(&message[2], &checksum, sizeof checksum);
  return message;
}

}  // namespace

Conversation::Conversation(Protocol protocol, const End& from, const End& to)
    : protocol_(protocol), family_(FamilyOf(from.address)), client_(BoundSocket(from)) {
  FileDescriptor& serving = protocol == Protocol::kTcp ? listener_ : server_;
  serving = BoundSocket(to);
  serverAddress_ = AddressOf(serving);
  if (protocol == Protocol::kTcp) {
    if (::listen(listener_.Get(), 1) != 0) ThrowError("listen");
    SendAtOnce(client_);
    return;
  }
  static std::uint16_t latestId = 0;
  echoId_ = ++latestId;
  Connect(client_, serverAddress_);
  Connect(server_, AddressOf(client_));
}

FileDescriptor Conversation::BoundSocket(const End& end) const {
  constexpr int kTypes[] = {SOCK_STREAM, SOCK_DGRAM, SOCK_RAW};
  const int type = kTypes[static_cast<int>(protocol_)] | SOCK_NONBLOCK;
  FileDescriptor socket = end.place->Socket(family_, type, IpProtocol());
  const sockaddr_storage address = SocketAddress(end.address);
  if (::bind(socket.Get(), Plain(address), sizeof address) != 0) ThrowError("bind");
  return socket;
}

int Conversation::IpProtocol() const {
  if (protocol_ == Protocol::kTcp) return IPPROTO_TCP;
  if (protocol_ == Protocol::kUdp) return IPPROTO_UDP;
  return family_ == AF_INET ? static_cast<int>(IPPROTO_ICMP) : static_cast<int>(IPPROTO_ICMPV6);
}

void Conversation::Begin() {
  if (protocol_ == Protocol::kTcp) {
    Connect(client_, serverAddress_);
  } else {
    SendForth();
  }
}

bool Conversation::Establish() {
  Begin();
  if (protocol_ == Protocol::kTcp) {
    if (!CanRead(listener_)) return false;
    server_ = FileDescriptor(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK));
    SendAtOnce(server_);
    return server_.IsOpen();
  }
  if (!CanRead(server_) || TakeForth() == 0) return false;
  if (protocol_ == Protocol::kUdp) SendBack();  // an echo is answered by the other end's system
  return CanRead(client_) && TakeBack() > 0;
}

void Conversation::Send(int socket) {
  const Bytes message = protocol_ == Protocol::kIcmp ? Echo(family_, echoId_) : Bytes{'x'};
  // A closed gate may refuse it here or drop it later: what counts is what arrives.
  [[maybe_unused]] const ssize_t sent =
      ::send(socket, message.data(), message.size(), MSG_NOSIGNAL);
}

bool Conversation::IsOurs(const std::uint8_t* bytes, std::size_t size) const {
  if (protocol_ != Protocol::kIcmp) return true;
  // A raw socket gets the IP header as well, with IPv4 only.
  const std::size_t start = family_ == AF_INET ? (bytes[0] & 0x0fu) * 4 : 0;
  return size >= start + 6 && std::memcmp(bytes + start + 4, &echoId_, sizeof echoId_) == 0;
}

int Conversation::Take(int socket) const {
  std::uint8_t buffer[256];
  int count = 0;
  for (;;) {
    const ssize_t bytes = ::recv(socket, buffer, sizeof buffer, MSG_DONTWAIT);
    if (bytes <= 0) return count;
    if (!IsOurs(buffer, static_cast<std::size_t>(bytes))) continue;
    count += protocol_ == Protocol::kTcp ? static_cast<int>(bytes) : 1;
  }
}

}  // namespace lab
