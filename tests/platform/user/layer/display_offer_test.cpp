// Displays that sessions offer to a service: which is taken, and that of a real screen joined late.
#include "platform/user/display_offer.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <pwd.h>
#include <sysexits.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "platform/account/session_watch.h"
#include "platform/kit/recording_window.h"
#include "platform/service/process_renewal.h"
#include "platform/shell/tray_desktop.h"
#include "platform/testing/simulated_seat.h"

namespace platform {
namespace {

using namespace std::string_literals;

TEST(DisplayOffer, OnlyADisplayOfThisMachineIsAnOffer) {
  const DisplayOffer offer{":10.0", L"c2"};
  EXPECT_EQ(DecodeOffer(EncodeOffer(offer)), offer);
  for (const std::string& each :
       {""s, ":0"s, "\0"s, "far:0\0"s, ":\0"s, ":0.\0"s, ":x\0"s, ":0:1\0"s, ":123456\0"s})
    EXPECT_EQ(DecodeOffer(each), std::nullopt) << each;
}

TEST(DisplayOffer, NobodyHasANewProcessByOfferingAnotherDisplayOfTheSameSession) {
  const HeldOffer joined{{":0", L"1"}, L"anna"};
  EXPECT_FALSE(AreOfDifferentSessions(joined, {{":9", L"1"}, L"anna"}));
  EXPECT_FALSE(AreOfDifferentSessions(joined, {{":0", L""}, L"anna"}));
  EXPECT_TRUE(AreOfDifferentSessions(joined, {{":0", L"2"}, L"anna"}));
  EXPECT_TRUE(AreOfDifferentSessions(joined, {{":0", L"1"}, L"bo"}));
}

TEST(DisplayOffer, ThatOfThePersonOnTheScreenIsTaken) {
  const SeatState anna{{{L"1", L"anna"}, {L"2", L"bo"}}, L"1"};
  const SeatState bo{anna.sessions, L"2"};
  const struct {
    const char* what;
    std::vector<HeldOffer> offers;
    SeatState seat;
    const char* taken;
  } rows[] = {
      {"no offer", {}, anna, ""},
      {"each has one", {{{":0", L"1"}, L"anna"}, {{":1", L"2"}, L"bo"}}, bo, ":1"},
      {"the latest", {{{":0", L"1"}, L"anna"}, {{":2", L""}, L"anna"}}, anna, ":2"},
      {"from another session of hers", {{{":5", L"9"}, L"anna"}}, anna, ""},
      {"somebody else claims her session", {{{":6", L"1"}, L"bo"}}, anna, ""},
      {"root beside her", {{{":7", L""}, L"root"}}, anna, ""},
      {"nobody is there", {{{":0", L"1"}, L"anna"}, {{":7", L""}, L"root"}}, {}, ":7"},
  };
  for (const auto& [what, offers, seat, taken] : rows) {
    const HeldOffer* const chosen = ChooseOffer(offers, seat);
    EXPECT_EQ(chosen != nullptr ? chosen->offer.display : "", taken) << what;
  }
}

// A screen, and a copy of the program that offers it in somebody's session.
struct OfferedScreen {
  OfferedScreen(const std::filesystem::path& folder, const std::string& session)
      : program(folder / ("windisplay" + session)) {
    std::filesystem::copy_file(
        std::filesystem::read_symlink("/proc/self/exe").replace_filename("windisplay"), program);
    offering = std::make_unique<ChildProcess>(
        "env DISPLAY=:" + display + " XDG_SESSION_ID=" + session + ' ' + program.native() + ' ' +
        (folder / "display").native());
  }

  ChildProcess screen{"Xvfb -displayfd 1 -screen 0 800x600x24 -nolisten tcp"};
  const std::string display = screen.ReadLine();
  const std::filesystem::path program;
  std::unique_ptr<ChildProcess> offering;
};

// For a process of its own, which it ends well, so that only what the test is about ends it with a
// failure. When it has joined the first person's display, the screen is the second person's.
[[noreturn]] void FollowScreens() {
  ::alarm(60);
  SimulatedSeat seat;
  SetSessionWatchSource(
      [&](SessionObserver& observer, SleepNotice) { return seat.Watch(observer); });
  const std::string name = ::getpwuid(::geteuid())->pw_name;
  const std::wstring account(name.begin(), name.end());
  SeatState state{{{L"1", account}, {L"2", account}}, L"1"};
  seat.Show(state);
  Recording recording;
  int width = 0;
  recording.On(WM_DISPLAYCHANGE,
               [&](HWND, UINT, WPARAM, LPARAM size) -> LRESULT { return width = LOWORD(size); });
  Recording::Create();
  std::chrono::steady_clock::time_point now;
  const DWORD start = ::GetTickCount();
  while (::GetTickCount() - start < 30'000) {
    MSG message{};
    if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
    ::Sleep(5);
    NoteSignOfLife(now);
    if (width == 0 || width != ::GetSystemMetrics(SM_CXSCREEN)) continue;
    std::fprintf(stderr, "joined %d\n", std::exchange(width, 0));
    state.activeId = L"2";
    seat.Show(state);
    now += std::chrono::minutes(1);
  }
  std::exit(EXIT_SUCCESS);
}

TEST(DisplayOffer, AServiceJoinsTheDisplayAndEndsForTheNextPersonsOne) {
  if (!TrayDesktop::IsInstalled()) GTEST_SKIP() << "needs Xvfb";
  ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
  // The other process runs this again from the beginning, with this one's environment and screens.
  std::string folder = std::filesystem::temp_directory_path() / "offers-XXXXXX";
  std::unique_ptr<OfferedScreen> first;
  std::unique_ptr<OfferedScreen> second;
  if (!testing::internal::InDeathTestChild()) {
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    ::setenv("RUNTIME_DIRECTORY", folder.c_str(), 1);
    first = std::make_unique<OfferedScreen>(folder, "1");
    second = std::make_unique<OfferedScreen>(folder, "2");
  }
  EXPECT_EXIT(FollowScreens(), ::testing::ExitedWithCode(EX_TEMPFAIL),
              "joined 800\n.*the new one that is wanted");
  ::unsetenv("RUNTIME_DIRECTORY");
  std::filesystem::remove_all(folder);
  EXPECT_EQ(first->offering->ReadLine(), "") << "ends when it is removed";
}

}  // namespace
}  // namespace platform
