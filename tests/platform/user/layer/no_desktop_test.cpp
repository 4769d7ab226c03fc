// What of the screen, the keyboard and the speaker works on a machine without a desktop.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "platform/dialog/message_box.h"
#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

TEST(NoDesktop, WhatTakesTheUserFails) {
  POINT place{};
  ::testing::internal::CaptureStderr();
  ExpectFailures({
      {"MessageBoxW", [] { return ::MessageBoxW(nullptr, L"Disk is full", L"Program", MB_OK); },
       ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
      {"MessageBeep", [] { return ::MessageBeep(MB_OK); },
       ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
      {"GetCursorPos", [&] { return ::GetCursorPos(&place); },
       ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION},
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

}  // namespace
