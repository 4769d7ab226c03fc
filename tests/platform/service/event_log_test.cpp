#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

#include "platform/service/service_fixture.h"

namespace {

using testing::Test;

BOOL Report(HANDLE source, const wchar_t* text) {
  LPCWSTR strings[] = {text};
  return ::ReportEventW(source, EVENTLOG_INFORMATION_TYPE, 0, 0, nullptr, 1, 0, strings, nullptr);
}

TEST(EventLog, AnEventArrivesWithItsSourceTypeAndText) {
  platform::SimulatedMachine machine;
  const HANDLE source = ::RegisterEventSourceW(nullptr, L"sample");
  ASSERT_NE(source, nullptr);
  LPCWSTR strings[] = {L"one %n", L"two"};
  EXPECT_TRUE(::ReportEventW(source, EVENTLOG_ERROR_TYPE, 0, 7, nullptr, 2, 0, strings, nullptr));
  EXPECT_TRUE(::DeregisterEventSource(source));
  ASSERT_EQ(machine.Events().size(), 1u);
  const platform::LoggedEvent event = machine.Events().front();
  EXPECT_EQ(event.source, L"sample");
  EXPECT_EQ(event.type, EVENTLOG_ERROR_TYPE);
  EXPECT_EQ(event.id, 7u);
  EXPECT_EQ(event.text, L"one %n two");
}

TEST(EventLog, WhatIsNoEventIsRefused) {
  platform::SimulatedMachine machine;
  EXPECT_EQ(::RegisterEventSourceW(L"other", L"sample"), nullptr);
  EXPECT_EQ(::GetLastError(), RPC_S_SERVER_UNAVAILABLE);
  EXPECT_EQ(::RegisterEventSourceW(nullptr, nullptr), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  const HANDLE source = ::RegisterEventSourceW(nullptr, L"sample");
  EXPECT_FALSE(::ReportEventW(source, 99, 0, 0, nullptr, 0, 0, nullptr, nullptr));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(ErrorOf(Report(source, std::wstring(31840, L'x').c_str())), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(::DeregisterEventSource(source));
  EXPECT_EQ(ErrorOf(Report(source, L"late")), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::DeregisterEventSource(source)), ERROR_INVALID_HANDLE);
  EXPECT_TRUE(machine.Events().empty());
}

// Runs `body` in a process of its own where the folder is empty and nobody else sees what is put
// into it; answers its result, or nothing where that cannot be had.
constexpr int kNoNamespace = 77;
int WithEmptyFolder(const char* folder, const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) {
    const bool alone = ::unshare(CLONE_NEWNS) == 0 &&
                       ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                       ::mount("none", folder, "tmpfs", 0, nullptr) == 0;
    ::_exit(alone ? body() : kNoNamespace);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int BindDatagramSocket(const char* path) {
  const int socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::ranges::copy(std::string_view(path), address.sun_path);
  if (::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) return -1;
  return socket;
}

std::string ReportAndReceive(int socket) {
  const HANDLE source = ::RegisterEventSourceW(nullptr, L"sample");
  Report(source, L"two\nlines \u00e5");
  char datagram[1024] = {};
  const ssize_t bytes = ::recv(socket, datagram, sizeof datagram, MSG_DONTWAIT);
  return bytes < 0 ? std::string() : std::string(datagram, static_cast<std::size_t>(bytes));
}

TEST(EventLog, TheJournalGetsOneFieldForEachThingEvenWithLineBreaks) {
  const int result = WithEmptyFolder("/run", [] {
    ::mkdir("/run/systemd", 0755);
    ::mkdir("/run/systemd/journal", 0755);
    const int socket = BindDatagramSocket("/run/systemd/journal/socket");
    const std::string datagram = ReportAndReceive(socket);
    using std::string_literals::operator""s;
    const std::string message = "MESSAGE\n\x0C\0\0\0\0\0\0\0two\nlines \xC3\xA5\n"s;
    const std::string identifier = "SYSLOG_IDENTIFIER\n\x06\0\0\0\0\0\0\0sample\n"s;
    return datagram.starts_with(message) && datagram.find(identifier) != std::string::npos &&
                   datagram.find("PRIORITY\n\1\0\0\0\0\0\0\0006\n"s) != std::string::npos
               ? 0
               : 1;
  });
  if (result == kNoNamespace) GTEST_SKIP() << "no mount namespace for a journal of its own";
  EXPECT_EQ(result, 0);
}

TEST(EventLog, WithoutJournalSyslogGetsOneLine) {
  if (std::filesystem::exists("/run/systemd/journal/socket")) GTEST_SKIP() << "there is a journal";
  const int result = WithEmptyFolder("/dev", [] {
    const int socket = BindDatagramSocket("/dev/log");
    const std::string datagram = ReportAndReceive(socket);
    const std::string tail = "]: two lines \xC3\xA5";
    return datagram.starts_with("<30>sample[") && datagram.ends_with(tail) ? 0 : 1;
  });
  if (result == kNoNamespace) GTEST_SKIP() << "no mount namespace for a syslog of its own";
  EXPECT_EQ(result, 0);
}

TEST(EventLog, WithNeitherTheLineGoesToStandardError) {
  const int result = WithEmptyFolder("/run", [] {
    if (std::filesystem::exists("/dev/log")) return kNoNamespace;
    int ends[2] = {};
    if (::pipe(ends) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0) return 2;
    Report(::RegisterEventSourceW(nullptr, L"sample"), L"hello");
    char line[256] = {};
    const ssize_t bytes = ::read(ends[0], line, sizeof line);
    return std::string_view(line, static_cast<std::size_t>(bytes)).ends_with(" sample: hello\n")
               ? 0
               : 1;
  });
  if (result == kNoNamespace) GTEST_SKIP() << "no mount namespace, or there is a syslog";
  EXPECT_EQ(result, 0);
}

}  // namespace
