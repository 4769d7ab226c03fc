// What windows are told of user sessions and of the machine's sleep.
#include <windows.h>

#include <gmock/gmock.h>

#include <wtsapi32.h>

#include <thread>
#include <utility>
#include <vector>

#include "platform/kit/failing_call.h"
#include "platform/kit/hidden_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

using platform::SeatSession;
using platform::SeatState;
using testing::ElementsAre;

using Message = std::pair<WPARAM, LPARAM>;
std::vector<Message> messages;  // of sessions
std::vector<WPARAM> powerEvents;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_WTSSESSION_CHANGE) messages.emplace_back(wParam, lParam);
  if (message == WM_POWERBROADCAST) powerEvents.push_back(wParam);
  return ::DefWindowProcW(window, message, wParam, lParam);
}

class SessionNotification : public testing::Test {
 protected:
  SessionNotification() {
    messages.clear();
    powerEvents.clear();
    EXPECT_TRUE(::WTSRegisterSessionNotification(window_.Get(), NOTIFY_FOR_ALL_SESSIONS));
  }
  static void Pump() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
      ::DispatchMessageW(&message);
  }

  platform::SimulatedMachine machine_;
  HiddenWindow window_{Procedure};
};

TEST_F(SessionNotification, EachChangeAtTheSeatIsOneMessageInOrder) {
  const SeatSession anna{L"1", L"anna"};
  const SeatSession locked{L"1", L"anna", true};
  const SeatSession bo{L"2", L"bo"};
  const struct {
    const char* what;
    SeatState seat;
    std::vector<Message> expected;  // reason and number of the session
  } steps[] = {
      {"logon", {{anna}, L"1"}, {{1, 1}, {5, 1}}},
      {"nothing", {{anna}, L"1"}, {}},
      {"lock", {{locked}, L"1"}, {{7, 1}}},
      {"unlock", {{anna}, L"1"}, {{8, 1}}},
      {"greeter", {{anna}, L""}, {{2, 1}}},
      {"second logon", {{anna, bo}, L"2"}, {{1, 2}, {5, 2}}},
      {"switch", {{anna, bo}, L"1"}, {{2, 2}, {1, 1}}},
      {"logoff behind the screen", {{anna}, L"1"}, {{6, 2}}},
      {"logoff", {{}, L""}, {{6, 1}, {2, 1}}},
  };
  ::WTSRegisterSessionNotification(window_.Get(),
                                   NOTIFY_FOR_ALL_SESSIONS);  // twice, and notified once
  for (const auto& [what, seat, expected] : steps) {
    machine_.Seat().Show(seat);
    Pump();
    EXPECT_EQ(std::exchange(messages, {}), expected) << what;
  }
  EXPECT_TRUE(::WTSUnRegisterSessionNotification(window_.Get()));
  EXPECT_TRUE(::WTSUnRegisterSessionNotification(window_.Get()));
  machine_.Seat().Show({{anna}, L"1"});
  EXPECT_TRUE(::WTSRegisterSessionNotification(
      window_.Get(), NOTIFY_FOR_ALL_SESSIONS));  // no change: anna is there
  Pump();
  EXPECT_EQ(messages, std::vector<Message>());
}

TEST_F(SessionNotification, TheMachineSleepsWhenAWindowHasAnswered) {
  std::size_t answered = 0;
  std::jthread logind([&] {
    machine_.Seat().Suspend();
    answered = powerEvents.size();
    ::PostMessageW(window_.Get(), WM_NULL, 0, 0);
  });
  MSG message{};
  EXPECT_TRUE(::GetMessageW(&message, window_.Get(), WM_NULL, WM_NULL + 1));
  logind.join();
  EXPECT_EQ(answered, 2u);
  machine_.Seat().Resume(true);
  machine_.Seat().Resume(false);
  EXPECT_THAT(powerEvents, ElementsAre(PBT_APMQUERYSUSPEND, PBT_APMSUSPEND, PBT_APMRESUMESUSPEND,
                                       PBT_APMRESUMECRITICAL));
}

TEST_F(SessionNotification, OtherFlagsAndWindowsAreRefused) {
  const HWND none = reinterpret_cast<HWND>(1);
  const HiddenWindow other;
  ExpectFailures({
      {"this session", [&] { return ::WTSRegisterSessionNotification(window_.Get(), 0); }, 87},
      {"no window", [&] { return ::WTSRegisterSessionNotification(none, 1); }, 1400},
      {"no window's end", [&] { return ::WTSUnRegisterSessionNotification(none); }, 1400},
      {"not registered", [&] { return ::WTSUnRegisterSessionNotification(other.Get()); }, 87},
  });
  const HMODULE library = ::LoadLibraryW(L"wtsapi32.dll");
  for (const char* name : {"WTSRegisterSessionNotification", "WTSUnRegisterSessionNotification"})
    EXPECT_NE(::GetProcAddress(library, name), nullptr) << name;
  ::FreeLibrary(library);
}

}  // namespace
