// The desktop as this layer loads it, so for Linux alone. Each test runs in a process of its own,
// since a desktop once loaded stays.
#include <windows.h>

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <future>
#include <sstream>
#include <string>
#include <thread>

#include "platform/kit/exit_with_result.h"
#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"
#include "platform/testing/simulated_machine.h"

namespace {

// All other tests are about a machine without a desktop, wherever they run.
[[maybe_unused]] const bool isWithoutDesktop = [] {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    ::unsetenv(name);
  return true;
}();

bool IsToolkitMapped() {
  std::stringstream maps;
  maps << std::ifstream("/proc/self/maps").rdbuf();
  return maps.str().find("Qt") != std::string::npos;
}

std::chrono::milliseconds ThreadTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::milliseconds(time.tv_sec * 1'000 + time.tv_nsec / 1'000'000);
}

// Runs the body in a process of its own on that desktop (null: none), which must end well and have
// written this on standard error.
void ExpectCleanExit(const char* desktop, void (*body)(), const char* written = "") {
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const auto run = [&] {
    ::alarm(60);
    if (desktop != nullptr) ::setenv("QT_QPA_PLATFORM", desktop, 1);
    body();
    ExitWithResult();
  };
  EXPECT_EXIT(run(), ::testing::ExitedWithCode(EXIT_SUCCESS), written);
}

TEST(Desktop, TheToolkitIsNeverMappedWithoutADesktopThatCanBeReached) {
  void (*useWindows)() = [] {
    Recording recording;
    const WindowThread owner;
    ::SendMessageW(owner.Window(), WM_APP, 0, 0);
    ::MessageBoxW(owner.Window(), L"Text", L"Caption", MB_OK);
    EXPECT_FALSE(IsToolkitMapped());
  };
  ExpectCleanExit(nullptr, useWindows, "Caption: Text");
  ExpectCleanExit("nothing-of-that-name", useWindows, "going on without one");
}

TEST(Desktop, MessagesOfOtherThreadsArriveWhileItsLoopWaits) {
  ExpectCleanExit("offscreen", [] {
    Recording recording;
    const WindowThread owner;
    EXPECT_TRUE(IsToolkitMapped());
    const HWND mine = Recording::Create();
    recording.On(WM_APP, [&](HWND, UINT, WPARAM wParam, LPARAM) -> LRESULT {
      return ::PostMessageW(mine, WM_APP + 1, wParam, 0);
    });
    for (WPARAM turn = 0; turn < 2'000; ++turn) {
      ::PostMessageW(owner.Window(), WM_APP, turn, 0);
      MSG message{};
      ::GetMessageW(&message, nullptr, 0, 0);
      ASSERT_EQ(message.wParam, turn);
      ASSERT_EQ(::SendMessageW(owner.Window(), WM_POWERBROADCAST, 0, 0), TRUE);
    }
  });
}

TEST(Desktop, TimersFollowTheLayersClock) {
  ExpectCleanExit(nullptr, [] {
    platform::SimulatedMachine machine;
    machine.UseDesktop();
    Recording recording;
    std::promise<void> came;
    recording.On(WM_APP, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
      return static_cast<LRESULT>(::SetTimer(window, 1, 3'600'000, nullptr));
    });
    recording.On(WM_TIMER, [&](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
      ::KillTimer(window, 1);
      came.set_value();
      return 0;
    });
    const WindowThread owner;
    EXPECT_TRUE(IsToolkitMapped());
    ::SendMessageW(owner.Window(), WM_APP, 0, 0);
    machine.Time().Advance(std::chrono::hours(1));
    came.get_future().wait();
  });
}

TEST(Desktop, AnIdleLoopTakesNoProcessorTimeAndNoTimerComesEarly) {
  ExpectCleanExit("offscreen", [] {
    Recording recording;
    ::SetTimer(Recording::Create(), 1, 1'000, nullptr);
    const DWORD start = ::GetTickCount();
    const auto before = ThreadTime();
    MSG message{};
    ::GetMessageW(&message, nullptr, WM_TIMER, WM_TIMER);
    EXPECT_LT((ThreadTime() - before).count(), 50);
    // In ticks, which timers are counted in.
    EXPECT_GE(::GetTickCount() - start, 1'000u);
    ::PostQuitMessage(8);
    EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 8u);
  });
}

TEST(Desktop, ItLeavesTheProgramsLocaleAlone) {
  ExpectCleanExit("offscreen", [] {
    ::setenv("LC_ALL", "C.UTF-8", 1);
    const std::string before = std::setlocale(LC_ALL, nullptr);
    Recording recording;
    Recording::Create();
    EXPECT_TRUE(IsToolkitMapped());
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
  });
}

}  // namespace
