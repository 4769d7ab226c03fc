#include <windows.h>

#include <gtest/gtest.h>

#include <shellapi.h>

#include <algorithm>
#include <string_view>

#include "platform/kit/hidden_window.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr UINT kId = 3;

class NotificationAreaTest : public ::testing::Test {
 protected:
  NOTIFYICONDATAW Data(UINT flags = 0) const {
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = window_.Get();
    data.uID = kId;
    data.uFlags = flags;
    return data;
  }
  template <std::size_t Size>
  static void Put(std::wstring_view text, WCHAR (&field)[Size]) {
    std::ranges::fill(field, L'\0');
    std::ranges::copy(text, field);
  }
  NOTIFYICONDATAW Icon() const {
    return platform::NotificationIcon(window_.Get(), kId).value_or(NOTIFYICONDATAW{});
  }

  platform::SimulatedMachine machine_;
  const HiddenWindow window_;
};

TEST_F(NotificationAreaTest, AnUnknownIconIsTold) {
  NOTIFYICONDATAW data = Data(NIF_TIP);
  for (const DWORD message : {NIM_MODIFY, NIM_DELETE}) {
    EXPECT_FALSE(::Shell_NotifyIconW(message, &data));
    EXPECT_EQ(::GetLastError(), ERROR_FILE_NOT_FOUND);
  }
  EXPECT_TRUE(machine_.NotificationChanges().empty());
}

TEST_F(NotificationAreaTest, AnIconIsItsWindowAndItsNumber) {
  NOTIFYICONDATAW data = Data();
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_ADD, &data));
  NOTIFYICONDATAW other = Data();
  other.uID = kId + 1;
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &other));
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_DELETE, &data));
  EXPECT_FALSE(platform::NotificationIcon(window_.Get(), kId).has_value());
  EXPECT_TRUE(platform::NotificationIcon(window_.Get(), kId + 1).has_value());
}

TEST_F(NotificationAreaTest, OnlyTheFieldsThatTheFlagsNameChange) {
  NOTIFYICONDATAW data = Data(NIF_TIP | NIF_MESSAGE | NIF_STATE);
  Put(L"first", data.szTip);
  data.uCallbackMessage = WM_APP;
  data.dwState = NIS_HIDDEN;
  data.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));

  NOTIFYICONDATAW change = Data(NIF_TIP);
  Put(L"second", change.szTip);
  change.uCallbackMessage = WM_APP + 1;
  change.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &change));
  EXPECT_STREQ(Icon().szTip, L"second");
  EXPECT_EQ(Icon().uCallbackMessage, WM_APP);
  EXPECT_EQ(Icon().dwState, NIS_HIDDEN);
}

TEST_F(NotificationAreaTest, TheStateChangesOnlyUnderItsMask) {
  NOTIFYICONDATAW data = Data(NIF_STATE);
  data.dwState = NIS_HIDDEN;
  data.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  data.dwState = 0;
  data.dwStateMask = 0;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &data));
  EXPECT_EQ(Icon().dwState, NIS_HIDDEN);
  data.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &data));
  EXPECT_EQ(Icon().dwState, 0u);
}

TEST_F(NotificationAreaTest, ABalloonIsOnRecordAndAnEmptyOneIsNot) {
  NOTIFYICONDATAW data = Data(NIF_INFO);
  ::testing::internal::CaptureStderr();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  Put(L"Title", data.szInfoTitle);
  Put(L"Text", data.szInfo);
  ::testing::internal::CaptureStderr();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &data));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "balloon: Title: Text\n");
}

TEST_F(NotificationAreaTest, OtherStructureSizesAreRefused) {
  NOTIFYICONDATAW data = Data(NIF_INFO);
  data.cbSize = sizeof data - 4;
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  data.cbSize = offsetof(NOTIFYICONDATAW, guidItem);
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
}

TEST_F(NotificationAreaTest, UnknownFlagsAreRefused) {
  NOTIFYICONDATAW data = Data(0x20);
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(platform::NotificationIcon(window_.Get(), kId).has_value());
}

TEST_F(NotificationAreaTest, TextsThatFillTheirFieldsAreEnded) {
  NOTIFYICONDATAW data = Data(NIF_TIP);
  std::ranges::fill(data.szTip, L'x');
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(std::wstring_view(Icon().szTip).size(), 127u);
}

TEST_F(NotificationAreaTest, IconsGoWithTheirWindow) {
  const HiddenWindow owner;
  const HWND other = owner.Get();
  NOTIFYICONDATAW data = Data();
  data.hWnd = other;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  ::DestroyWindow(other);
  EXPECT_FALSE(platform::NotificationIcon(other, kId).has_value());
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
}

TEST_F(NotificationAreaTest, AShellThatRestartsKnowsNoIcon) {
  NOTIFYICONDATAW data = Data();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  platform::ClearNotificationArea();
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_MODIFY, &data));
  EXPECT_EQ(::GetLastError(), ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
}

}  // namespace
