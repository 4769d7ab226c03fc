#include "lab/conversation.h"

#include <netinet/icmp6.h>
#include <netinet/ip.h>
#include <netinet/ip_icmp.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "lab/socket_address.h"

namespace lab {

namespace {

constexpr int kWaitMilliseconds = 10000;

[[noreturn]] void ThrowError(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

FileDescriptor BoundSocket(int type, int protocol, int family, const End& end) {
  FileDescriptor socket;
  end.place->Run([&] {
    socket = FileDescriptor(::socket(family, type | SOCK_NONBLOCK | SOCK_CLOEXEC, protocol));
    if (!socket.IsValid()) ThrowError("socket");
    const sockaddr_storage address = SocketAddress(family, end.address);
    if (::bind(socket.Get(), Plain(address), sizeof address) != 0) ThrowError("bind");
  });
  return socket;
}

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

bool CanRead(int socket) {
  pollfd waiting{socket, POLLIN, 0};
  return ::poll(&waiting, 1, kWaitMilliseconds) == 1;
}

// RFC 1071; the kernel does it for ICMPv6 only.
std::uint16_t Checksum(const std::array<std::uint8_t, 16>& bytes) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at < bytes.size(); at += 2)
    sum += bytes[at] << 8 | bytes[at + 1];
  sum = (sum & 0xffff) + (sum >> 16);
  return htons(static_cast<std::uint16_t>(~(sum + (sum >> 16))));
}

}  // namespace

Conversation::Conversation(Protocol protocol, int family, const End& from, const End& to)
    : protocol_(protocol), family_(family) {
  switch (protocol) {
    case Protocol::kTcp:
      MakeTcp(from, to);
      break;
    case Protocol::kUdp:
      MakeUdp(from, to);
      break;
    case Protocol::kIcmp:
      MakeIcmp(from, to);
      break;
  }
}

void Conversation::MakeTcp(const End& from, const End& to) {
  listener_ = BoundSocket(SOCK_STREAM, 0, family_, to);
  if (::listen(listener_.Get(), 1) != 0) ThrowError("listen");
  serverAddress_ = AddressOf(listener_);
  client_ = BoundSocket(SOCK_STREAM, 0, family_, from);
  SendAtOnce(client_);
}

void Conversation::MakeUdp(const End& from, const End& to) {
  server_ = BoundSocket(SOCK_DGRAM, 0, family_, to);
  serverAddress_ = AddressOf(server_);
  client_ = BoundSocket(SOCK_DGRAM, 0, family_, from);
  Connect(client_, serverAddress_);
  Connect(server_, AddressOf(client_));
}

void Conversation::MakeIcmp(const End& from, const End& to) {
  static std::uint16_t latestId = 0;
  echoId_ = ++latestId;
  client_ = BoundSocket(SOCK_RAW, IpProtocol(), family_, from);
  server_ = BoundSocket(SOCK_RAW, IpProtocol(), family_, to);
  Connect(client_, SocketAddress(family_, to.address));
  Connect(server_, SocketAddress(family_, from.address));
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

bool Conversation::Accept() {
  if (!CanRead(listener_.Get())) return false;
  server_ = FileDescriptor(::accept4(listener_.Get(), nullptr, nullptr, SOCK_NONBLOCK));
  if (!server_.IsValid()) return false;
  SendAtOnce(server_);
  return true;
}

bool Conversation::Establish() {
  Begin();
  if (protocol_ == Protocol::kTcp) return Accept();
  if (!CanRead(server_.Get()) || TakeForth() == 0) return false;
  if (protocol_ == Protocol::kUdp) SendBack();  // an echo is answered by the other end's system
  return CanRead(client_.Get()) && TakeBack() > 0;
}

void Conversation::SendForth() {
  Send(client_.Get());
}
void Conversation::SendBack() {
  Send(server_.Get());
}

void Conversation::Send(int socket) {
  if (protocol_ == Protocol::kIcmp) return SendEcho(socket);
  // A closed gate may refuse it here or drop it later: what counts is what arrives.
  [[maybe_unused]] const ssize_t sent = ::send(socket, "x", 1, MSG_NOSIGNAL);
}

void Conversation::SendEcho(int socket) {
  std::array<std::uint8_t, 16> message{};
  message[0] = family_ == AF_INET ? ICMP_ECHO : ICMP6_ECHO_REQUEST;
  std::memcpy(&message[4], &echoId_, sizeof echoId_);
  const std::uint16_t checksum = Checksum(message);
  std::memcpy(&message[2], &checksum, sizeof checksum);
  [[maybe_unused]] const ssize_t sent = ::send(socket, message.data(), message.size(), 0);
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
