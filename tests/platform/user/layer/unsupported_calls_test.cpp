// What Windows has and this layer refuses.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

using ::testing::IsEmpty;

TEST(UnsupportedCalls, TheyFailAndTellNoWindow) {
  constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
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
      {"flags", [&] { return ::SetWindowPos(window, nullptr, 1, 1, 1, 1, 0x8000); },
       ERROR_INVALID_FLAGS},
      {"flags", [&] { return ::PeekMessageW(&message, nullptr, 0, 0, 0x80); }, ERROR_INVALID_FLAGS},
      {"dotted caret", [&] { return ::CreateCaret(window, grey, 1, 1); }, kInvalid},
      {"bar of a control", [&] { return ::ShowScrollBar(window, SB_CTL, TRUE); }, kInvalid},
      {"bar of a control", [&] { return ::SetScrollPos(edit, SB_VERT, 3, TRUE); },
       ERROR_NO_SCROLLBARS},
      {"own cursor", [&] { return ::LoadCursorW(program, IDC_ARROW); }, kNoResource},
      {"named cursor", [] { return ::LoadCursorW(nullptr, L"name"); }, kNoResource},
      {"box of type 6", [] { return ::MessageBoxW(nullptr, L"", L"", 0x6); }, kStyle},
      {"box of icon 5", [] { return ::MessageBoxW(nullptr, L"", L"", 0x50); }, kStyle},
      {"modal box", [] { return ::MessageBoxW(nullptr, L"", L"", 0x1000); }, kStyle},
      {"box's owner", [&] { return ::MessageBoxW(gone, L"", L"", MB_OK); },
       ERROR_INVALID_WINDOW_HANDLE},
  });
  EXPECT_FALSE(::InvalidateRect(nullptr, nullptr, TRUE));
  EXPECT_FALSE(::ShowWindow(window, 3)) << "maximized";
  EXPECT_THAT(recording.Take(), IsEmpty());
  EXPECT_THAT(machine.MessageBoxes(), IsEmpty());
  EXPECT_TRUE(::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) << "it was not taken";
  RECT area{};
  ::GetClientRect(edit, &area);
  EXPECT_EQ(area.right, 50) << "a control has bars of its own making";
}

}  // namespace
