// How windows are made, changed, shown and ended.
#include <windows.h>

#include <gmock/gmock.h>

#include "platform/kit/recording_window.h"
#include "platform/kit/window_thread.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WindowTest : public ::testing::Test {
 protected:
  Recording recording_;
};

TEST_F(WindowTest, CreationTellsEverythingItWasGivenAndShowingComesAfterwards) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  const HWND owner = Recording::Create();
  int parameter = 0;
  recording_.On(WM_CREATE, [&](HWND window, UINT, WPARAM, LPARAM lParam) -> LRESULT {
    const auto& seen = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
    EXPECT_EQ(seen.lpCreateParams, &parameter);
    EXPECT_EQ(seen.hInstance, instance);
    EXPECT_EQ(seen.hwndParent, owner);
    EXPECT_EQ(seen.dwExStyle, 8u);
    EXPECT_EQ(seen.style, LONG{WS_VISIBLE | WS_CAPTION});
    EXPECT_STREQ(seen.lpszName, L"it");
    EXPECT_STREQ(seen.lpszClass, L"Recording");
    EXPECT_EQ((std::vector{seen.x, seen.y, seen.cx, seen.cy}), (std::vector{1, 2, 3, 4}));
    EXPECT_FALSE(::IsWindowVisible(window));
    return 0;
  });
  recording_.Take();
  ::CreateWindowExW(8, L"Recording", L"it", WS_VISIBLE | WS_CAPTION, 1, 2, 3, 4, owner, nullptr,
                    instance, &parameter);
  EXPECT_THAT(recording_.Take(),
              ElementsAre("it:NCCREATE", "it:CREATE", "it:SHOWWINDOW 1", "it:SIZE 3,4",
                          "it:MOVE 1,2", "it:ACTIVATE 1", "it:SETFOCUS"));
}

LRESULT EndWindow(HWND window, UINT, WPARAM, LPARAM) {
  ::DestroyWindow(window);
  return 0;
}

TEST(WindowCreation, AWindowThatIsRefusedOrEndedMeanwhileIsNotReturned) {
  const Recording::Answer refuse = [](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
    return message == WM_CREATE ? -1 : FALSE;
  };
  const struct {
    UINT message;
    Recording::Answer answer;
    std::vector<std::string> told;
  } cases[] = {
      {WM_NCCREATE, refuse, {"NCCREATE", "NCDESTROY"}},
      {WM_CREATE, refuse, {"NCCREATE", "CREATE", "DESTROY", "NCDESTROY"}},
      {WM_CREATE, EndWindow, {"NCCREATE", "CREATE", "DESTROY", "NCDESTROY"}},
      {WM_SHOWWINDOW, EndWindow, {"NCCREATE", "CREATE", "SHOWWINDOW 1", "DESTROY", "NCDESTROY"}},
  };
  for (const auto& each : cases) {
    Recording recording;
    HWND created = nullptr;
    recording.On(each.message, [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
      created = window;
      return each.answer(window, message, wParam, lParam);
    });
    EXPECT_EQ(Recording::Create({}, nullptr, WS_VISIBLE), nullptr) << each.message;
    EXPECT_EQ(recording.Take(), each.told) << each.message;
    EXPECT_FALSE(::IsWindow(created)) << each.message;
  }
}

TEST(WindowDestruction, AWindowMayEndInAnyOfItsMessages) {
  const struct {
    UINT message;
    const char* told;
    void (*cause)(HWND window);
  } cases[] = {
      {WM_NULL, "0", [](HWND window) { ::SendMessageW(window, WM_NULL, 0, 0); }},
      {WM_MOVE, "MOVE 1,1", [](HWND window) { ::MoveWindow(window, 1, 1, 1, 1, TRUE); }},
      {WM_SHOWWINDOW, "SHOWWINDOW 1", [](HWND window) { ::ShowWindow(window, SW_SHOW); }},
  };
  for (const auto& each : cases) {
    Recording recording;
    const HWND window = Recording::Create();
    recording.On(each.message, EndWindow);
    recording.Take();
    each.cause(window);
    EXPECT_THAT(recording.Take(), ElementsAre(each.told, "DESTROY", "NCDESTROY"));
    EXPECT_FALSE(::IsWindow(window)) << each.told;
  }
}

TEST_F(WindowTest, OwnedWindowsGoBeforeTheirOwnerIsNotifiedAndChildrenAfterwards) {
  const HWND parent = Recording::Create(L"parent");
  const HWND child = Recording::Create(L"child", parent, WS_CHILD);
  Recording::Create(L"grandchild", child, WS_CHILD);
  Recording::Create(L"owned", parent);
  recording_.Take();
  EXPECT_TRUE(::DestroyWindow(parent));
  EXPECT_THAT(recording_.Take(),
              ElementsAre("owned:DESTROY", "owned:NCDESTROY", "parent:DESTROY", "child:DESTROY",
                          "grandchild:DESTROY", "grandchild:NCDESTROY", "child:NCDESTROY",
                          "parent:NCDESTROY"));
}

TEST_F(WindowTest, AChildThatTakesItsParentWithItGoesOnce) {
  const HWND parent = Recording::Create(L"parent");
  const HWND child = Recording::Create(L"child", parent, WS_CHILD);
  recording_.On(WM_DESTROY, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    EXPECT_TRUE(::IsWindow(child));
    ::DestroyWindow(parent);
    return 0;
  });
  recording_.Take();
  EXPECT_TRUE(::DestroyWindow(child));
  EXPECT_THAT(recording_.Take(), ElementsAre("child:DESTROY", "parent:DESTROY", "child:NCDESTROY",
                                             "parent:NCDESTROY"));
}

TEST_F(WindowTest, UserDataAndProcedureAreKeptPerWindow) {
  const HWND window = Recording::Create();
  const HWND other = Recording::Create();
  EXPECT_EQ(::SetWindowLongPtrW(window, GWLP_USERDATA, 11), 0);
  EXPECT_EQ(::SetWindowLongPtrW(window, GWLP_USERDATA, 12), 11);
  EXPECT_EQ(::GetWindowLongPtrW(window, GWLP_USERDATA), 12);
  EXPECT_EQ(::GetWindowLongPtrW(other, GWLP_USERDATA), 0);
  const WNDPROC answerSeven = [](HWND, UINT, WPARAM, LPARAM) -> LRESULT { return 7; };
  const auto seven = reinterpret_cast<LONG_PTR>(answerSeven);
  const LONG_PTR before = ::SetWindowLongPtrW(window, GWLP_WNDPROC, seven);
  EXPECT_EQ(before, ::GetWindowLongPtrW(other, GWLP_WNDPROC));
  const MSG message{window, WM_APP, 0, 0, 0, {}};
  EXPECT_EQ(::DispatchMessageW(&message), 7);
  EXPECT_EQ(::SendMessageW(other, WM_APP, 0, 0), 0);
  EXPECT_EQ(::SetWindowLongPtrW(window, GWLP_WNDPROC, before), seven);
  EXPECT_EQ(::SendMessageW(window, WM_APP, 0, 0), 0);
}

TEST_F(WindowTest, StylesAndNumberAreChangedButForShowingAndRelations) {
  const HWND child = ::CreateWindowExW(8, L"Recording", L"", WS_CHILD | WS_TABSTOP, 0, 0, 0, 0,
                                       Recording::Create(), reinterpret_cast<HMENU>(UINT_PTR{1056}),
                                       nullptr, nullptr);
  EXPECT_EQ(::SetWindowLongPtrW(child, GWLP_ID, 7), 1056);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWLP_ID), 7);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWL_EXSTYLE), 8);
  STYLESTRUCT change{};
  recording_.On(WM_STYLECHANGED, [&](HWND, UINT, WPARAM, LPARAM lParam) -> LRESULT {
    change = *reinterpret_cast<const STYLESTRUCT*>(lParam);
    return 0;
  });
  ::SetWindowLongPtrW(child, GWL_STYLE, WS_GROUP | WS_VISIBLE);
  EXPECT_EQ(::GetWindowLongPtrW(child, GWL_STYLE), LONG_PTR{WS_CHILD | WS_GROUP});
  EXPECT_EQ(change.styleOld, WS_CHILD | WS_TABSTOP);
  EXPECT_EQ(change.styleNew, WS_CHILD | WS_GROUP);
}

class WindowShowing : public WindowTest {
 protected:
  void SetUp() override { recording_.Take(); }

  const HWND window_ = Recording::Create();
};

TEST_F(WindowShowing, TheMessagesOfShowingAndHidingComeInOrderAndOnce) {
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(),
              ElementsAre("SHOWWINDOW 1", "SIZE 0,0", "MOVE 0,0", "ACTIVATE 1", "SETFOCUS"));
  EXPECT_TRUE(::ShowWindow(window_, SW_SHOWNORMAL));
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_TRUE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::ShowWindow(window_, SW_HIDE));
  EXPECT_FALSE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(), ElementsAre("SHOWWINDOW 0", "ACTIVATE 0", "KILLFOCUS"));
  EXPECT_FALSE(::ShowWindow(window_, SW_SHOWNOACTIVATE));
  EXPECT_TRUE(::IsWindowVisible(window_));
  EXPECT_THAT(recording_.Take(), ElementsAre("SHOWWINDOW 1")) << "without the keyboard";
}

TEST_F(WindowShowing, AChildIsVisibleOnlyWithItsParent) {
  const HWND child = Recording::Create(L"child", window_, WS_CHILD | WS_VISIBLE);
  EXPECT_FALSE(::IsWindowVisible(child));
  ::ShowWindow(window_, SW_SHOW);
  EXPECT_TRUE(::IsWindowVisible(child));
  EXPECT_EQ(::GetFocus(), window_);
  ::ShowWindow(child, SW_HIDE);
  EXPECT_FALSE(::IsWindowVisible(child));
}

TEST_F(WindowShowing, EnablingTellsWhatWasBeforeAndOnlyChanges) {
  EXPECT_TRUE(::IsWindowEnabled(window_));
  EXPECT_FALSE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Take(), IsEmpty());
  EXPECT_FALSE(::EnableWindow(window_, FALSE));
  EXPECT_FALSE(::IsWindowEnabled(window_));
  EXPECT_TRUE(::EnableWindow(window_, FALSE));
  EXPECT_TRUE(::EnableWindow(window_, TRUE));
  EXPECT_THAT(recording_.Take(), ElementsAre("CANCELMODE", "ENABLE 0", "ENABLE 1"));
  EXPECT_FALSE(::IsWindowEnabled(Recording::Create(L"", window_, WS_CHILD | WS_DISABLED)));
}

TEST_F(WindowShowing, WindowsOfOtherThreadsAreShownByTheirOwn) {
  DWORD shownOn = 0;
  recording_.On(WM_SHOWWINDOW, [&](HWND, UINT, WPARAM, LPARAM) -> LRESULT {
    shownOn = ::GetCurrentThreadId();
    return 0;
  });
  const WindowThread owner;
  EXPECT_FALSE(::ShowWindow(owner.Window(), SW_SHOW));
  EXPECT_TRUE(::IsWindowVisible(owner.Window()));
  EXPECT_EQ(shownOn, owner.Id());
  EXPECT_FALSE(::EnableWindow(owner.Window(), FALSE));
  EXPECT_FALSE(::IsWindowEnabled(owner.Window()));
  EXPECT_EQ(::GetActiveWindow(), nullptr);
}

}  // namespace
