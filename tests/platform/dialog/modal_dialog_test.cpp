// How modal dialogs begin and end, and how dialogs fail to open.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>

#include "platform/dialog/scripted_dialog.h"
#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"

namespace {

using ::testing::Contains;
using ::testing::Not;

class ModalDialog : public ::testing::Test {
 protected:
  // Does the work as soon as the dialog's loop runs.
  void OnStart(std::function<void(HWND)> work) {
    dialog_.On(WM_INITDIALOG, [](HWND window, WPARAM, LPARAM) -> INT_PTR {
      return ::PostMessageW(window, WM_USER + 1, 0, 0);
    });
    dialog_.On(WM_USER + 1, [work = std::move(work)](HWND window, WPARAM, LPARAM) -> INT_PTR {
      work(window);
      return TRUE;
    });
  }

  ScriptedDialog dialog_;
};

TEST_F(ModalDialog, EndingItInWmInitDialogNeverShowsIt) {
  dialog_.On(WM_INITDIALOG,
             [](HWND window, WPARAM, LPARAM) -> INT_PTR { return ::EndDialog(window, 31); });
  EXPECT_EQ(dialog_.Run(), 31);
  EXPECT_FALSE(::IsWindow(dialog_.Window()));
  EXPECT_THAT(dialog_.Messages(), Not(Contains(WM_SHOWWINDOW)));
  EXPECT_THAT(dialog_.Messages(), Contains(WM_NCDESTROY));
}

TEST_F(ModalDialog, ADestroyedDialogAnswersZero) {
  OnStart([](HWND window) { ::DestroyWindow(window); });
  EXPECT_EQ(dialog_.Run(), 0);
}

TEST_F(ModalDialog, QuittingEndsItAndIsPassedOn) {
  OnStart([](HWND) { ::PostQuitMessage(6); });
  EXPECT_EQ(dialog_.Run(), IDOK);
  MSG message{};
  EXPECT_EQ(::GetMessageW(&message, nullptr, 0, 0), FALSE);
  EXPECT_EQ(message.wParam, 6u);
}

TEST_F(ModalDialog, AKeyOfAnotherWindowIsACharacterInItsLoopToo) {
  Recording recording;
  const auto endBy = [&](HWND, UINT message, WPARAM wParam, LPARAM) -> LRESULT {
    return ::EndDialog(dialog_.Window(), message == WM_CHAR ? static_cast<INT_PTR>(wParam) : -2);
  };
  recording.On(WM_CHAR, endBy);
  recording.On(WM_APP, endBy);
  recording.On(WM_KEYDOWN, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    return ::PostMessageW(window, WM_APP, 0, 0);  // behind the character
  });
  const HWND other = Recording::Create();
  OnStart([&](HWND) { ::PostMessageW(other, WM_KEYDOWN, 'A', 0x001E0001); });
  EXPECT_EQ(dialog_.Run(), 'a');
}

TEST_F(ModalDialog, TheOwnerIsDisabledMeanwhileAndActiveAfterwards) {
  const HWND owner = ::CreateWindowExW(0, L"HiddenWindow", L"Owner", WS_POPUP | WS_VISIBLE, 0, 0,
                                       200, 100, nullptr, nullptr, nullptr, nullptr);
  BOOL enabled = TRUE;
  OnStart([&](HWND window) {
    enabled = ::IsWindowEnabled(owner);
    ::EndDialog(window, 1);
  });
  EXPECT_EQ(dialog_.Run(Form(), owner), 1);
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(::IsWindowEnabled(owner));
  EXPECT_EQ(::GetActiveWindow(), owner);
  ::EnableWindow(owner, FALSE);
  EXPECT_EQ(dialog_.Run(Form(), owner), 1);
  EXPECT_FALSE(::IsWindowEnabled(owner)) << "it was disabled before";
  ::DestroyWindow(owner);
}

TEST_F(ModalDialog, ACallFromAnotherThreadRunsOnTheWindowThread) {
  DWORD ranOn = 0;
  OnStart([&](HWND window) {
    ranOn = ::GetCurrentThreadId();
    ::EndDialog(window, 12);
  });
  const LPCWSTR form = Form();
  auto result = std::async(std::launch::async, [&] { return dialog_.Run(form); });
  while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
    DispatchAll();
  EXPECT_EQ(result.get(), 12);
  EXPECT_EQ(ranOn, ::GetCurrentThreadId());
}

TEST_F(ModalDialog, CallsFailWithTheDocumentedErrors) {
  const HWND window = dialog_.Create();
  const HWND field = ::GetDlgItem(window, kName);
  const LPCWSTR missing = MAKEINTRESOURCEW(9);
  ExpectFailures({
      {"DialogBox", [&] { return dialog_.Run(missing) != -1; }, ERROR_RESOURCE_NAME_NOT_FOUND},
      {"EndDialog", [&] { return ::EndDialog(field, 1); }, ERROR_WINDOW_NOT_DIALOG},
      {"GetDlgItem", [&] { return ::GetDlgItem(window, 9); }, ERROR_CONTROL_ID_NOT_FOUND},
      {"GetWindowLongPtr", [&] { return ::GetWindowLongPtrW(window, DWLP_USER + 8); },
       ERROR_INVALID_INDEX},
  });
  ::DestroyWindow(window);
  EXPECT_EQ(dialog_.Run(Form(), window), 0) << "zero, not minus one, for an owner that is none";
}

}  // namespace
