#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/user/recording_window.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowTest : public ::testing::Test {
 protected:
  Recording recording_;
};

TEST_F(WindowTest, CreationAndDestructionComeInOrder) {
  const HWND window = Recording::Create();
  ASSERT_NE(window, nullptr);
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "CREATE"));
  recording_.Clear();
  EXPECT_TRUE(::DestroyWindow(window));
  EXPECT_THAT(recording_.Entries(), ElementsAre("DESTROY", "NCDESTROY"));
}

TEST_F(WindowTest, CreationTellsEverythingItWasGiven) {
  CREATESTRUCTW seen{};
  int parameter = 0;
  recording_.On(WM_CREATE, [&](HWND, UINT, WPARAM, LPARAM lParam) -> LRESULT {
    seen = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
    return 0;
  });
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  const HWND window = ::CreateWindowExW(8, L"Recording", L"Title", 0x00CF0000, 1, 2, 3, 4,
                                        HWND_MESSAGE, nullptr, instance, &parameter);
  EXPECT_EQ(seen.lpCreateParams, &parameter);
  EXPECT_EQ(seen.hInstance, instance);
  EXPECT_EQ(seen.hwndParent, HWND_MESSAGE);
  EXPECT_EQ(seen.dwExStyle, 8u);
  EXPECT_EQ(seen.style, 0x00CF0000);
  EXPECT_STREQ(seen.lpszName, L"Title");
  EXPECT_STREQ(seen.lpszClass, L"Recording");
  EXPECT_EQ((std::vector{seen.x, seen.y, seen.cx, seen.cy}), (std::vector{1, 2, 3, 4}));
  EXPECT_TRUE(::DestroyWindow(window));
}

TEST_F(WindowTest, AProcedureThatRefusesTheFirstMessageGetsOnlyTheLast) {
  HWND refused = nullptr;
  recording_.On(WM_NCCREATE, [&](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    refused = window;
    return FALSE;
  });
  EXPECT_EQ(Recording::Create(), nullptr);
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "NCDESTROY"));
  EXPECT_FALSE(::IsWindow(refused));
}

TEST_F(WindowTest, AProcedureThatRefusesCreationIsDestroyed) {
  recording_.On(WM_CREATE, [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return -1; });
  EXPECT_EQ(Recording::Create(), nullptr);
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "CREATE", "DESTROY", "NCDESTROY"));
}

TEST_F(WindowTest, AWindowMayEndDuringItsOwnCreation) {
  recording_.On(WM_CREATE, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    ::DestroyWindow(window);
    return 0;
  });
  EXPECT_EQ(Recording::Create(), nullptr);
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "CREATE", "DESTROY", "NCDESTROY"));
}

TEST_F(WindowTest, AWindowMayEndDuringAMessageOfItsOwn) {
  recording_.On(WM_APP, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    return ::DestroyWindow(window) && !::IsWindow(window) ? 5 : 0;
  });
  const HWND window = Recording::Create();
  EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 5);
}

TEST_F(WindowTest, AWindowIsNotDestroyedTwice) {
  recording_.On(WM_DESTROY, [](HWND window, UINT, WPARAM, LPARAM) -> LRESULT {
    EXPECT_TRUE(::IsWindow(window));
    ::DestroyWindow(window);
    return 0;
  });
  EXPECT_TRUE(::DestroyWindow(Recording::Create()));
  EXPECT_THAT(recording_.Entries(), ElementsAre("NCCREATE", "CREATE", "DESTROY", "NCDESTROY"));
}

TEST_F(WindowTest, ChildrenAreToldAfterTheirParentAndGoBeforeIt) {
  const HWND parent = Recording::Create(L"parent");
  const HWND child = Recording::Create(L"child", parent, WS_CHILD);
  Recording::Create(L"grandchild", child, WS_CHILD);
  recording_.Clear();
  EXPECT_TRUE(::DestroyWindow(parent));
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("parent:DESTROY", "child:DESTROY", "grandchild:DESTROY",
                          "grandchild:NCDESTROY", "child:NCDESTROY", "parent:NCDESTROY"));
}

TEST_F(WindowTest, OwnedWindowsGoBeforeTheirOwnerIsTold) {
  const HWND owner = Recording::Create(L"owner");
  Recording::Create(L"owned", owner);
  recording_.Clear();
  EXPECT_TRUE(::DestroyWindow(owner));
  EXPECT_THAT(recording_.Entries(),
              ElementsAre("owned:DESTROY", "owned:NCDESTROY", "owner:DESTROY", "owner:NCDESTROY"));
}

TEST_F(WindowTest, AChildThatTakesItsParentWithItGoesOnce) {
  const HWND parent = Recording::Create(L"parent");
  const HWND child = Recording::Create(L"child", parent, WS_CHILD);
  recording_.On(WM_DESTROY, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    ::DestroyWindow(parent);
    return 0;
  });
  recording_.Clear();
  EXPECT_TRUE(::DestroyWindow(child));
  EXPECT_THAT(recording_.Entries(), ElementsAre("child:DESTROY", "parent:DESTROY",
                                                "child:NCDESTROY", "parent:NCDESTROY"));
}

TEST_F(WindowTest, RelationsThatCannotBeAreRefused) {
  const HWND gone = Recording::Create();
  ::DestroyWindow(gone);
  const auto failure = [](HWND parent, DWORD style, HMENU menu) {
    ::SetLastError(NO_ERROR);
    EXPECT_EQ(::CreateWindowExW(0, L"Recording", L"", style, 0, 0, 0, 0, parent, menu,
                                ::GetModuleHandleW(nullptr), nullptr),
              nullptr);
    return ::GetLastError();
  };
  recording_.Clear();
  EXPECT_EQ(failure(nullptr, WS_CHILD, nullptr), ERROR_TLW_WITH_WSCHILD);
  EXPECT_EQ(failure(gone, 0, nullptr), ERROR_INVALID_WINDOW_HANDLE);
  EXPECT_EQ(failure(nullptr, 0, reinterpret_cast<HMENU>(gone)), ERROR_INVALID_MENU_HANDLE);
  EXPECT_THAT(recording_.Entries(), IsEmpty());
}

TEST_F(WindowTest, AStaleHandleIsToldByEveryFunction) {
  const HWND stale = Recording::Create();
  ::DestroyWindow(stale);
  MSG message{};
  const std::pair<const char*, std::function<bool()>> calls[] = {
      {"IsWindow", [&] { return ::IsWindow(stale) != FALSE; }},
      {"DestroyWindow", [&] { return ::DestroyWindow(stale) != FALSE; }},
      {"SendMessageW", [&] { return ::SendMessageW(stale, WM_NCCREATE, 0, 0) != 0; }},
      {"PostMessageW", [&] { return ::PostMessageW(stale, WM_APP, 0, 0) != FALSE; }},
      {"SetTimer", [&] { return ::SetTimer(stale, 1, 10, nullptr) != 0; }},
      {"KillTimer", [&] { return ::KillTimer(stale, 1) != FALSE; }},
      {"GetWindowLongPtrW", [&] { return ::GetWindowLongPtrW(stale, GWLP_WNDPROC) != 0; }},
      {"SetWindowLongPtrW", [&] { return ::SetWindowLongPtrW(stale, GWLP_WNDPROC, 1) != 0; }},
      {"GetWindowThreadProcessId", [&] { return ::GetWindowThreadProcessId(stale, nullptr) != 0; }},
      {"GetMessageW", [&] { return ::GetMessageW(&message, stale, 0, 0) != -1; }},
      {"PeekMessageW", [&] { return ::PeekMessageW(&message, stale, 0, 0, PM_REMOVE) != FALSE; }},
  };
  // The slot is in use again, but by another window.
  const HWND other = Recording::Create();
  for (const auto& [name, call] : calls) {
    ::SetLastError(NO_ERROR);
    EXPECT_FALSE(call()) << name;
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE) << name;
  }
  EXPECT_TRUE(::DestroyWindow(other));
}

TEST_F(WindowTest, UserDataIsKeptPerWindow) {
  const HWND first = Recording::Create();
  const HWND second = Recording::Create();
  EXPECT_EQ(::SetWindowLongPtrW(first, GWLP_USERDATA, 11), 0);
  EXPECT_EQ(::SetWindowLongPtrW(first, GWLP_USERDATA, 12), 11);
  EXPECT_EQ(::GetWindowLongPtrW(first, GWLP_USERDATA), 12);
  EXPECT_EQ(::GetWindowLongPtrW(second, GWLP_USERDATA), 0);
  EXPECT_EQ(::GetWindowLongPtrW(first, 0), 0);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_INDEX);
  ::DestroyWindow(first);
  ::DestroyWindow(second);
}

LRESULT CALLBACK AnswerSeven(HWND, UINT, WPARAM, LPARAM) {
  return 7;
}

TEST_F(WindowTest, AProcedureCanBeReplaced) {
  const HWND window = Recording::Create();
  const LONG_PTR before =
      ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AnswerSeven));
  EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 7);
  EXPECT_EQ(::SetWindowLongPtrW(window, GWLP_WNDPROC, before),
            reinterpret_cast<LONG_PTR>(&AnswerSeven));
  EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 0);
  ::DestroyWindow(window);
}

TEST_F(WindowTest, TheDefaultProcedureAllowsCreationAndSuspension) {
  const HWND window = Recording::Create();
  EXPECT_EQ(::DefWindowProcW(window, WM_NCCREATE, 0, 0), TRUE);
  EXPECT_EQ(::DefWindowProcW(window, WM_POWERBROADCAST, PBT_APMQUERYSUSPEND, 0), TRUE);
  EXPECT_EQ(::DefWindowProcW(window, WM_CREATE, 0, 0), 0);
  EXPECT_EQ(::DefWindowProcW(window, WM_APP, 0, 0), 0);
  ::DestroyWindow(window);
}

TEST_F(WindowTest, AWindowKnowsItsThreadAndProcess) {
  const HWND window = Recording::Create();
  DWORD process = 0;
  EXPECT_EQ(::GetWindowThreadProcessId(window, &process), ::GetCurrentThreadId());
  EXPECT_EQ(process, ::GetCurrentProcessId());
  ::DestroyWindow(window);
}

}  // namespace
