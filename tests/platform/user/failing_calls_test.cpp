// The last errors of calls about windows.
#include <windows.h>

#include <gmock/gmock.h>

#include <climits>

#include "platform/kit/failing_call.h"
#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"

namespace {

using ::testing::IsEmpty;

constexpr DWORD kInvalid = ERROR_INVALID_PARAMETER;
constexpr DWORD kNoWindow = ERROR_INVALID_WINDOW_HANDLE;

HWND CreateFailing(const wchar_t* className, DWORD style = 0, HWND parent = nullptr,
                   HMENU menu = nullptr) {
  return ::CreateWindowExW(0, className, L"", style, 0, 0, 9, 9, parent, menu,
                           ::GetModuleHandleW(nullptr), nullptr);
}

class FailingCalls : public ::testing::Test {
 protected:
  Recording recording_;
  const HWND window_ = Recording::Create();
  MSG message_{};
  RECT rect_{};
  POINT point_{};
};

TEST_F(FailingCalls, ADestroyedWindowIsAnInvalidHandle) {
  const HWND gone = Recording::Create();
  ::DestroyWindow(gone);
  // The slot is in use again, but by another window.
  Recording::Create();
  recording_.Take();
  const MSG toGone{gone, WM_NCCREATE, 0, 0, 0, {}};
  int end = 0;
  ExpectFailures({
      {"IsWindow", [&] { return ::IsWindow(gone); }, kNoWindow},
      {"DestroyWindow", [&] { return ::DestroyWindow(gone); }, kNoWindow},
      {"CreateWindowExW", [&] { return CreateFailing(L"Recording", 0, gone); }, kNoWindow},
      {"SendMessageW", [&] { return ::SendMessageW(gone, WM_NCCREATE, 0, 0); }, kNoWindow},
      {"PostMessageW", [&] { return ::PostMessageW(gone, WM_APP, 0, 0); }, kNoWindow},
      {"GetMessageW", [&] { return ::GetMessageW(&message_, gone, 0, 0) != -1; }, kNoWindow},
      {"PeekMessageW", [&] { return ::PeekMessageW(&message_, gone, 0, 0, PM_REMOVE); }, kNoWindow},
      {"DispatchMessageW", [&] { return ::DispatchMessageW(&toGone); }, kNoWindow},
      {"SetTimer", [&] { return ::SetTimer(gone, 1, 10, nullptr); }, kNoWindow},
      {"KillTimer", [&] { return ::KillTimer(gone, 1); }, kNoWindow},
      {"GetWindowLongPtrW", [&] { return ::GetWindowLongPtrW(gone, GWLP_WNDPROC); }, kNoWindow},
      {"SetWindowLongPtrW", [&] { return ::SetWindowLongPtrW(gone, GWLP_WNDPROC, 1); }, kNoWindow},
      {"SetWindowTextW", [&] { return ::SetWindowTextW(gone, L""); }, kNoWindow},
      {"ShowWindow", [&] { return ::ShowWindow(gone, SW_SHOW); }, kNoWindow},
      {"IsWindowVisible", [&] { return ::IsWindowVisible(gone); }, kNoWindow},
      {"EnableWindow", [&] { return ::EnableWindow(gone, TRUE); }, kNoWindow},
      {"IsWindowEnabled", [&] { return ::IsWindowEnabled(gone); }, kNoWindow},
      {"SetForegroundWindow", [&] { return ::SetForegroundWindow(gone); }, kNoWindow},
      {"SetFocus", [&] { return ::SetFocus(gone); }, kNoWindow},
      {"CreateCaret", [&] { return ::CreateCaret(gone, nullptr, 1, 1); }, kNoWindow},
      {"GetWindowRect", [&] { return ::GetWindowRect(gone, &rect_); }, kNoWindow},
      {"GetClientRect", [&] { return ::GetClientRect(gone, &rect_); }, kNoWindow},
      {"ScreenToClient", [&] { return ::ScreenToClient(gone, &point_); }, kNoWindow},
      {"ScreenToClient", [&] { return ::ScreenToClient(nullptr, &point_); }, kNoWindow},
      {"MoveWindow", [&] { return ::MoveWindow(gone, 0, 0, 0, 0, FALSE); }, kNoWindow},
      {"GetScrollRange", [&] { return ::GetScrollRange(gone, SB_VERT, &end, &end); }, kNoWindow},
  });
  EXPECT_THAT(recording_.Take(), IsEmpty());
}

TEST_F(FailingCalls, AnotherThreadMayNeitherEndNorReadNorTimeAWindow) {
  constexpr DWORD kForeign = ERROR_WINDOW_OF_OTHER_THREAD;
  const WindowThread owner;
  const HWND other = owner.Window();
  ExpectFailures({
      {"DestroyWindow", [&] { return ::DestroyWindow(other); }, ERROR_ACCESS_DENIED},
      {"SetTimer", [&] { return ::SetTimer(other, 1, 9, nullptr); }, kForeign},
      {"GetMessageW", [&] { return ::GetMessageW(&message_, other, 0, 0) != -1; }, kForeign},
      {"SetFocus", [&] { return ::SetFocus(other); }, ERROR_ACCESS_DENIED},
      {"CreateCaret", [&] { return ::CreateCaret(other, nullptr, 3, 12); }, ERROR_ACCESS_DENIED},
  });
  EXPECT_TRUE(::IsWindow(other));
}

TEST_F(FailingCalls, InvalidArgumentsFailWithTheDocumentedError) {
  constexpr DWORD kRange = ERROR_INVALID_SCROLLBAR_RANGE;
  constexpr DWORD kNoResource = ERROR_RESOURCE_NAME_NOT_FOUND;
  constexpr DWORD kNoThread = ERROR_INVALID_THREAD_ID;
  constexpr DWORD kNoClass = ERROR_CLASS_DOES_NOT_EXIST;
  WNDCLASSW found{};
  const auto notMenu = reinterpret_cast<HMENU>(window_);
  recording_.Take();
  SCROLLINFO info{sizeof info - 4, SIF_ALL, 0, 0, 0, 0, 0};
  ExpectFailures({
      {"no parent", [] { return CreateFailing(L"Recording", WS_CHILD); }, ERROR_TLW_WITH_WSCHILD},
      {"a menu that is none", [&] { return CreateFailing(L"Recording", 0, nullptr, notMenu); },
       ERROR_INVALID_MENU_HANDLE},
      {"a class of nobody", [] { return CreateFailing(L"None"); }, ERROR_CANNOT_FIND_WND_CLASS},
      {"GetClassInfoW", [&] { return ::GetClassInfoW(nullptr, L"None", &found); }, kNoClass},
      {"UnregisterClassW", [&] { return ::UnregisterClassW(L"None", nullptr); }, kNoClass},
      {"GetWindowLongPtrW", [&] { return ::GetWindowLongPtrW(window_, 0); }, ERROR_INVALID_INDEX},
      {"GetWindowRect", [&] { return ::GetWindowRect(window_, nullptr); }, ERROR_NOACCESS},
      {"GetClientRect", [&] { return ::GetClientRect(window_, nullptr); }, ERROR_NOACCESS},
      {"GetCaretPos", [] { return ::GetCaretPos(nullptr); }, ERROR_NOACCESS},
      {"GetKeyboardState", [] { return ::GetKeyboardState(nullptr); }, ERROR_NOACCESS},
      {"GetMessageW", [] { return ::GetMessageW(nullptr, nullptr, 0, 0) != -1; }, ERROR_NOACCESS},
      {"KillTimer", [&] { return ::KillTimer(window_, 1); }, kInvalid},
      {"RegisterWindowMessageW", [] { return ::RegisterWindowMessageW(L""); }, kInvalid},
      {"PostThreadMessageW", [] { return ::PostThreadMessageW(0, WM_APP, 0, 0); }, kNoThread},
      {"no thread", [] { return ::PostThreadMessageW(0xFFFFFFF0, WM_APP, 0, 0); }, kNoThread},
      {"LoadCursorW", [] { return ::LoadCursorW(nullptr, MAKEINTRESOURCEW(1)); }, kNoResource},
      {"both bars", [&] { return ::SetScrollRange(window_, SB_BOTH, 0, 1, TRUE); }, kInvalid},
      {"wide range", [&] { return ::SetScrollRange(window_, SB_VERT, -2, INT_MAX, TRUE); }, kRange},
      {"GetScrollInfo", [&] { return ::GetScrollInfo(window_, SB_VERT, &info); }, kInvalid},
  });
  EXPECT_THAT(recording_.Take(), IsEmpty());
}

}  // namespace
