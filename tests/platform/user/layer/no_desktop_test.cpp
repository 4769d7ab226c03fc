// What of the screen, the keyboard and the speaker works on a machine without a desktop, and what
// Windows has and this layer refuses.
#include <windows.h>

#include <gmock/gmock.h>

#include <array>

#include "platform/dialog/message_box.h"
#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

TEST(NoDesktop, WhatTakesTheUserFails) {
  constexpr DWORD kNoStation = ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION;
  const auto box = [] { return ::MessageBoxW(nullptr, L"Disk is full", L"Program", MB_OK); };
  POINT place{};
  ::testing::internal::CaptureStderr();
  ExpectFailures({
      {"MessageBoxW", box, kNoStation},
      {"MessageBeep", [] { return ::MessageBeep(MB_OK); }, kNoStation},
      {"GetCursorPos", [&] { return ::GetCursorPos(&place); }, kNoStation},
      {"OpenClipboard", [] { return ::OpenClipboard(nullptr); }, kNoStation},
  });
  EXPECT_THAT(::testing::internal::GetCapturedStderr(),
              ::testing::HasSubstr("Program: Disk is full"));
}

TEST(NoDesktop, AnExceptionInsideTheLayerIsAFailureToItsCaller) {
  const std::function<void()> throws[] = {[] { throw std::bad_alloc(); }, [] { throw 1; }};
  const DWORD errors[] = {ERROR_NOT_ENOUGH_MEMORY, ERROR_GEN_FAILURE};
  for (const std::size_t each : {0, 1}) {
    platform::SetMessageBoxResponder([&](const auto&) { return throws[each](), IDOK; });
    ExpectFailures(
        {{"MessageBoxW", [] { return ::MessageBoxW(nullptr, L"", L"", MB_OK); }, errors[each]}});
  }
  platform::SetMessageBoxResponder({});
}

TEST(NoDesktop, NoKeyIsDown) {
  EXPECT_EQ(::GetAsyncKeyState(VK_LBUTTON), 0);
  for (const int key : {-1, VK_SHIFT, 256})
    EXPECT_EQ(::GetKeyState(key), 0) << key;
  std::array<BYTE, 256> keys;
  keys.fill(0x80);
  EXPECT_TRUE(::GetKeyboardState(keys.data()));
  EXPECT_THAT(keys, ::testing::Each(0));
}

TEST(NoDesktop, ThereIsNothingToPaintOn) {
  const Recording recording;
  const HWND window = Recording::Create();
  PAINTSTRUCT paint{};
  EXPECT_EQ(::BeginPaint(window, &paint), nullptr);
  EXPECT_TRUE(::EndPaint(window, &paint));
  EXPECT_TRUE(::InvalidateRect(window, nullptr, TRUE));
  EXPECT_TRUE(::UpdateWindow(window));
  EXPECT_EQ(::GetSystemMetrics(SM_CXSCREEN), 0);
  EXPECT_EQ(::GetSystemMetrics(SM_CXSMICON), 16);
  EXPECT_EQ(::GetSystemMetrics(SM_CYSMICON), 16);
}

TEST(NoDesktop, TheSimulatedMachineAnswersMessageBoxesAndSeesWhatWasAsked) {
  platform::SimulatedMachine machine;
  machine.AnswerMessageBoxes({IDNO});
  EXPECT_EQ(::MessageBoxW(nullptr, L"Text?", L"Caption", MB_YESNO | MB_ICONQUESTION), IDNO);
  EXPECT_EQ(::MessageBoxW(nullptr, L"Text", nullptr, MB_OK), IDOK);
  const auto seen = machine.MessageBoxes();
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].text, L"Text?");
  EXPECT_EQ(seen[0].caption, L"Caption");
  EXPECT_EQ(seen[0].type, MB_YESNO | MB_ICONQUESTION);
  EXPECT_EQ(seen[1].caption, L"Error");
}

TEST(UnsupportedCalls, TheyFailAndTellNoWindow) {
  constexpr DWORD kFlags = ERROR_INVALID_FLAGS;
  constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
  constexpr DWORD kNoWindow = ERROR_INVALID_WINDOW_HANDLE;
  constexpr DWORD kStyle = ERROR_INVALID_MSGBOX_STYLE;
  constexpr DWORD kNoResource = ERROR_RESOURCE_NAME_NOT_FOUND;
  platform::SimulatedMachine machine;
  Recording recording;
  const HWND window = Recording::Create();
  const HWND gone = Recording::Create();
  ::DestroyWindow(gone);
  const HWND edit = ::CreateWindowExW(0, L"Edit", L"", WS_CHILD | WS_VSCROLL, 0, 0, 50, 50, window,
                                      nullptr, nullptr, nullptr);
  const HINSTANCE program = ::GetModuleHandleW(nullptr);
  const auto grey = reinterpret_cast<HBITMAP>(UINT_PTR{1});
  MSG message{};
  ::PostMessageW(window, WM_APP, 0, 0);
  recording.Take();
  ExpectFailures({
      {"order", [&] { return ::SetWindowPos(window, edit, 1, 1, 1, 1, 0); }, kInvalid},
      {"flags", [&] { return ::SetWindowPos(window, nullptr, 1, 1, 1, 1, 0x8000); }, kFlags},
      {"flags", [&] { return ::PeekMessageW(&message, nullptr, 0, 0, 0x80); }, kFlags},
      {"dotted caret", [&] { return ::CreateCaret(window, grey, 1, 1); }, kInvalid},
      {"bar of a control", [&] { return ::ShowScrollBar(window, SB_CTL, TRUE); }, kInvalid},
      {"its own bar", [&] { return ::SetScrollPos(edit, SB_VERT, 3, TRUE); }, ERROR_NO_SCROLLBARS},
      {"own cursor", [&] { return ::LoadCursorW(program, IDC_ARROW); }, kNoResource},
      {"named cursor", [] { return ::LoadCursorW(nullptr, L"name"); }, kNoResource},
      {"box of type 6", [] { return ::MessageBoxW(nullptr, L"", L"", 0x6); }, kStyle},
      {"box of icon 5", [] { return ::MessageBoxW(nullptr, L"", L"", 0x50); }, kStyle},
      {"modal box", [] { return ::MessageBoxW(nullptr, L"", L"", 0x1000); }, kStyle},
      {"box's owner", [&] { return ::MessageBoxW(gone, L"", L"", MB_OK); }, kNoWindow},
  });
  EXPECT_FALSE(::InvalidateRect(nullptr, nullptr, TRUE));
  EXPECT_FALSE(::ShowWindow(window, 3)) << "maximized";
  EXPECT_THAT(recording.Take(), ::testing::IsEmpty());
  EXPECT_THAT(machine.MessageBoxes(), ::testing::IsEmpty());
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) << "it was not taken";
  RECT area{};
  ::GetClientRect(edit, &area);
  EXPECT_EQ(area.right, 50) << "a control has bars of its own making";
}

}  // namespace
