#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>

#include "own_namespaces.h"
#include "platform/service/layer/service_fixture.h"

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

BOOL Report(HANDLE source, const std::wstring& text, WORD type = EVENTLOG_INFORMATION_TYPE) {
  LPCWSTR strings[] = {text.c_str()};
  return ::ReportEventW(source, type, 0, 0, nullptr, 1, 0, strings, nullptr);
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

TEST(EventLog, InvalidSourcesAndEventsFailAndAreNotDelivered) {
  platform::SimulatedMachine machine;
  EXPECT_EQ(ErrorOf(::RegisterEventSourceW(L"other", L"sample")), RPC_S_SERVER_UNAVAILABLE);
  EXPECT_EQ(ErrorOf(::RegisterEventSourceW(nullptr, nullptr)), ERROR_INVALID_PARAMETER);
  const HANDLE source = ::RegisterEventSourceW(nullptr, L"sample");
  EXPECT_EQ(ErrorOf(Report(source, L"unknown type", 99)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(ErrorOf(Report(source, std::wstring(31840, L'x'))), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(::DeregisterEventSource(source));
  EXPECT_EQ(ErrorOf(Report(source, L"late")), ERROR_INVALID_HANDLE);
  EXPECT_EQ(ErrorOf(::DeregisterEventSource(source)), ERROR_INVALID_HANDLE);
  EXPECT_TRUE(machine.Events().empty());
}

// Whether `test` could be run, in a process of its own where the folder is empty and nobody else
// sees what is put into it.
bool RunWithEmptyFolder(const char* folder, const std::function<void()>& test) {
  constexpr int kNoNamespace = 77;
  const pid_t child = ::fork();
  if (child == 0) {
    if (!own_namespaces::Enter().empty() || ::mount("none", folder, "tmpfs", 0, nullptr) != 0)
      ::_exit(kNoNamespace);
    test();
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNoNamespace) return false;
  EXPECT_EQ(status, 0) << "it failed there";
  return true;
}

// What a socket at the path gets of an event.
std::string Received(std::string_view path) {
  const int socket = ::socket(AF_UNIX, SOCK_DGRAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::ranges::copy(path, address.sun_path);
  EXPECT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  Report(::RegisterEventSourceW(nullptr, L"sample"), L"two: lines\nOf what: \u00e5\nmore");
  char datagram[1024] = {};
  const ssize_t bytes = ::recv(socket, datagram, sizeof datagram, MSG_DONTWAIT);
  return bytes < 0 ? "nothing" : std::string(datagram, static_cast<std::size_t>(bytes));
}

TEST(EventLog, TheJournalGetsOneFieldForEachThingEvenWithLineBreaks) {
  const bool run = RunWithEmptyFolder("/run", [] {
    std::filesystem::create_directories("/run/systemd/journal");
    using std::string_literals::operator""s;
    EXPECT_THAT(
        Received("/run/systemd/journal/socket"),
        AllOf(StartsWith("MESSAGE\n\x1B\0\0\0\0\0\0\0two: lines\nOf what: \xC3\xA5\nmore\n"s),
              HasSubstr("MESSAGE_ID\n\x20\0\0\0\0\0\0\0005714d319447c8709ba61669f0257536d\n"s),
              HasSubstr("EVENT_OF_WHAT\n\2\0\0\0\0\0\0\0\xC3\xA5\n"s),
              HasSubstr("SYSLOG_IDENTIFIER\n\x06\0\0\0\0\0\0\0sample\n"s),
              HasSubstr("PRIORITY\n\1\0\0\0\0\0\0\0006\n"s)));
  });
  if (!run) GTEST_SKIP() << "no mount namespace for a journal of its own";
}

TEST(EventLog, WithoutJournalSyslogGetsOneLine) {
  if (std::filesystem::exists("/run/systemd/journal/socket")) GTEST_SKIP() << "there is a journal";
  const bool run = RunWithEmptyFolder("/dev", [] {
    EXPECT_THAT(Received("/dev/log"), AllOf(StartsWith("<30>sample["),
                                            EndsWith("]: two: lines, Of what: \xC3\xA5, more")));
  });
  if (!run) GTEST_SKIP() << "no mount namespace for a syslog of its own";
}

TEST(EventLog, WithNeitherTheLineGoesToStandardError) {
  if (std::filesystem::exists("/dev/log")) GTEST_SKIP() << "there is a syslog";
  const bool run = RunWithEmptyFolder("/run", [] {
    testing::internal::CaptureStderr();
    Report(::RegisterEventSourceW(nullptr, L"sample"), L"hello");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), EndsWith(" sample: hello\n"));
  });
  if (!run) GTEST_SKIP() << "no mount namespace";
}

}  // namespace
