// The desktop as this layer loads it, so for Linux alone. Each test runs in a process of its own,
// since a desktop once loaded stays.
#include <windows.h>

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <future>
#include <string>
#include <thread>

#include "platform/testing/simulated_machine.h"
#include "platform/user/recording_window.h"
#include "platform/user/window_thread.h"

namespace {

// All other tests are about a machine without a desktop, wherever they run.
class NoDesktop : public ::testing::Environment {
 public:
  void SetUp() override {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
      ::unsetenv(name);
  }
};
[[maybe_unused]] const auto* const noDesktop = ::testing::AddGlobalTestEnvironment(new NoDesktop);

bool IsMapped(const std::string& library) {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find(library) != std::string::npos) return true;
  }
  return false;
}

std::chrono::milliseconds ThreadTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::milliseconds(time.tv_sec * 1'000 + time.tv_nsec / 1'000'000);
}

// Ends the process with an error as soon as something is not as it should be.
void Require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s\n", what);
  ::_exit(EXIT_FAILURE);
}

[[noreturn]] void Run(const char* desktop, void (*body)()) {
  ::alarm(60);
  if (desktop != nullptr) ::setenv("QT_QPA_PLATFORM", desktop, 1);
  body();
  std::exit(EXIT_SUCCESS);
}

// Runs the body in a process of its own on that desktop (null: none), which must end well and have
// written this on standard error.
void ExpectCleanExit(const char* desktop, void (*body)(), const char* written = "") {
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(Run(desktop, body), ::testing::ExitedWithCode(EXIT_SUCCESS), written);
}

void UseWindowsWithoutToolkit() {
  Recording recording;
  const WindowThread owner;
  ::SendMessageW(owner.Window(), WM_APP, 0, 0);
  ::MessageBoxW(owner.Window(), L"Text", L"Caption", MB_OK);
  Require(!IsMapped("Qt"), "no toolkit");
}

TEST(Desktop, AMachineWithoutOneNeverMapsTheToolkit) {
  ExpectCleanExit(nullptr, UseWindowsWithoutToolkit, "Caption: Text");
}

TEST(Desktop, OneThatCannotBeReachedCountsAsNone) {
  ExpectCleanExit("nothing-of-that-name", UseWindowsWithoutToolkit, "going on without one");
}

void PingTheWindowThread() {
  Recording recording;
  const WindowThread owner;
  Require(IsMapped("libQt6Widgets"), "the toolkit");
  const HWND mine = Recording::Create();
  recording.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM) -> LRESULT {
    return ::PostMessageW(mine, WM_APP + 1, wParam, 0);
  });
  for (WPARAM turn = 0; turn < 2'000; ++turn) {
    ::PostMessageW(owner.Window(), WM_APP, turn, 0);
    MSG message{};
    ::GetMessageW(&message, nullptr, 0, 0);
    Require(message.wParam == turn, "the answer to this turn");
    Require(::SendMessageW(owner.Window(), WM_POWERBROADCAST, 0, 0) == TRUE, "an answer");
  }
  ::DestroyWindow(mine);
}

TEST(Desktop, MessagesOfOtherThreadsArriveWhileItsLoopWaits) {
  ExpectCleanExit("offscreen", PingTheWindowThread);
}

void QuitOnATimer() {
  Recording recording;
  recording.On(WM_TIMER, [](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    ::PostQuitMessage(8);
    return 0;
  });
  const HWND window = Recording::Create();
  const DWORD start = ::GetTickCount();
  ::SetTimer(window, 1, 100, nullptr);
  MSG message{};
  while (::GetMessageW(&message, nullptr, 0, 0) > 0)
    ::DispatchMessageW(&message);
  Require(message.wParam == 8, "the exit code");
  // In ticks, which timers are counted in: 100 of them may be 99.1 ms.
  Require(::GetTickCount() - start >= 100, "its time");
}

TEST(Desktop, TimersFireAndQuittingEndsTheLoop) {
  ExpectCleanExit("offscreen", QuitOnATimer);
}

void FollowTheSimulatedClock() {
  platform::SimulatedMachine machine;
  machine.UseDesktop();
  Recording recording;
  std::promise<void> came;
  const WindowThread owner;
  recording.On(WM_APP, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    return static_cast<LRESULT>(::SetTimer(window, 1, 3'600'000, nullptr));
  });
  recording.On(WM_TIMER, [&](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    ::KillTimer(window, 1);
    came.set_value();
    return 0;
  });
  Require(IsMapped("libQt6Widgets"), "the toolkit");
  ::SendMessageW(owner.Window(), WM_APP, 0, 0);
  machine.Time().Advance(std::chrono::hours(1));
  came.get_future().wait();
}

TEST(Desktop, TimersFollowTheLayersClock) {
  ExpectCleanExit(nullptr, FollowTheSimulatedClock);
}

void WaitForASecond() {
  Recording recording;
  const HWND window = Recording::Create();
  std::thread poster([window] {
    std::this_thread::sleep_for(std::chrono::seconds(1));
    ::PostMessageW(window, WM_APP, 0, 0);
  });
  MSG message{};
  const auto before = ThreadTime();
  ::GetMessageW(&message, window, WM_APP, WM_APP);
  Require(ThreadTime() - before < std::chrono::milliseconds(50), "an idle thread");
  poster.join();
}

TEST(Desktop, AnIdleLoopTakesNoProcessorTime) {
  ExpectCleanExit("offscreen", WaitForASecond);
}

void UseWindowsOfThreeThreads() {
  Recording recording;
  for (int turn = 0; turn < 3; ++turn) {
    const WindowThread owner;
    Require(::SendMessageW(owner.Window(), WM_POWERBROADCAST, 0, 0) == TRUE, "an answer");
  }
}

TEST(Desktop, ItIsLeftWithItsThreadAndJoinedByTheNext) {
  ExpectCleanExit("offscreen", UseWindowsOfThreeThreads);
}

void CompareLocales() {
  ::setenv("LC_ALL", "C.UTF-8", 1);
  const std::string before = std::setlocale(LC_ALL, nullptr);
  Recording recording;
  ::DestroyWindow(Recording::Create());
  Require(IsMapped("libQt6Widgets"), "the toolkit");
  Require(std::setlocale(LC_ALL, nullptr) == before, "the locale");
}

TEST(Desktop, ItLeavesTheProgramsLocaleAlone) {
  ExpectCleanExit("offscreen", CompareLocales);
}

}  // namespace
