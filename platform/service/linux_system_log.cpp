// Writes to the journal with its native protocol and to syslog as in RFC 3164. A field of the
// journal is its name, a line break, the length of the value as 64 bits little-endian, the value,
// and a line break.
#include <windows.h>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/kernel/encoding.h"
#include "platform/kernel/file_descriptor.h"
#include "platform/kernel/linux_socket_address.h"
#include "platform/service/event_delivery.h"
#include "platform/service/event_fields.h"

namespace platform {
namespace {

constexpr std::string_view kJournalSocket = "/run/systemd/journal/socket";
constexpr std::string_view kSyslogSocket = "/dev/log";
constexpr int kDaemonFacility = 3;

// The severities of RFC 5424.
int Priority(WORD type) {
  constexpr int kError = 3;
  constexpr int kWarning = 4;
  constexpr int kInformation = 6;
  if (type == EVENTLOG_ERROR_TYPE) return kError;
  return type == EVENTLOG_WARNING_TYPE ? kWarning : kInformation;
}

void AppendField(std::string& datagram, std::string_view name, std::string_view value) {
  datagram += name;
  datagram += '\n';
  for (std::uint64_t length = value.size(), byte = 0; byte < 8; ++byte)
    datagram += static_cast<char>((length >> (8 * byte)) & 0xFF);
  datagram += value;
  datagram += '\n';
}

std::string JournalDatagram(const LoggedEvent& event) {
  std::string datagram;
  const std::string text = Utf8(event.text);
  AppendField(datagram, "MESSAGE", text);
  AppendField(datagram, "MESSAGE_ID", EventKindId(text));
  AppendField(datagram, "PRIORITY", std::to_string(Priority(event.type)));
  AppendField(datagram, "SYSLOG_IDENTIFIER", Utf8(event.source));
  AppendField(datagram, "EVENT_ID", std::to_string(event.id));
  for (const auto& [name, value] : EventData(text))
    AppendField(datagram, name, value);
  return datagram;
}

std::string SyslogDatagram(const LoggedEvent& event) {
  return '<' + std::to_string(kDaemonFacility * 8 + Priority(event.type)) + '>' +
         Utf8(event.source) + '[' + std::to_string(::getpid()) + "]: " + OneLine(event.text);
}

bool SendDatagram(const SocketAddress& log, const std::string& datagram) {
  const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  // A log that does not read must not block the program.
  return ::sendto(socket.Get(), datagram.data(), datagram.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                  log.Get(), SocketAddress::Size()) == static_cast<ssize_t>(datagram.size());
}

}  // namespace

bool WriteSystemLog(const LoggedEvent& event) {
  return SendDatagram(SocketAddress(kJournalSocket), JournalDatagram(event)) ||
         SendDatagram(SocketAddress(kSyslogSocket), SyslogDatagram(event));
}

}  // namespace platform
