#include <windows.h>

#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"
#include "platform/user/recording_window.h"

namespace {

TEST(MessageBox, TheSimulatedMachineAnswersAndSeesWhatWasAsked) {
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

TEST(MessageBox, WithoutADesktopItFailsAndItsTextIsOnRecord) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(::MessageBoxW(nullptr, L"Disk is full", L"Program", MB_OK), 0);
  EXPECT_EQ(::GetLastError(), ERROR_REQUIRES_INTERACTIVE_WINDOWSTATION);
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("Program: Disk is full"),
            std::string::npos);
}

TEST(MessageBox, UnknownTypesAndOwnersAreRefused) {
  platform::SimulatedMachine machine;
  for (const UINT type : {0x6u, 0x50u, 0x00001000u}) {
    EXPECT_EQ(::MessageBoxW(nullptr, L"", L"", type), 0) << type;
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_MSGBOX_STYLE) << type;
  }
  Recording recording;
  const HWND gone = Recording::Create();
  ::DestroyWindow(gone);
  EXPECT_EQ(::MessageBoxW(gone, L"", L"", MB_OK), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_TRUE(machine.MessageBoxes().empty());
}

}  // namespace
