#include <windows.h>

#include <gtest/gtest.h>

#include <shellapi.h>

#include <algorithm>
#include <string_view>

#include "platform/kit/failing_call.h"
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
  NOTIFYICONDATAW Icon() const {
    return platform::NotificationIcon(window_.Get(), kId).value_or(NOTIFYICONDATAW{});
  }
  static DWORD Notify(DWORD message, NOTIFYICONDATAW& data) {
    return ErrorOf(::Shell_NotifyIconW(message, &data));
  }

  platform::SimulatedMachine machine_;
  const HiddenWindow window_;
};

TEST_F(NotificationAreaTest, AnIconIsItsWindowAndItsNumber) {
  NOTIFYICONDATAW data = Data(NIF_TIP);
  EXPECT_EQ(Notify(NIM_MODIFY, data), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(Notify(NIM_DELETE, data), ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(machine_.NotificationChanges().empty());
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_FALSE(::Shell_NotifyIconW(NIM_ADD, &data));
  NOTIFYICONDATAW other = Data();
  other.uID = kId + 1;
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &other));
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_DELETE, &data));
  EXPECT_FALSE(platform::NotificationIcon(window_.Get(), kId).has_value());
  EXPECT_TRUE(platform::NotificationIcon(window_.Get(), kId + 1).has_value());
}

TEST_F(NotificationAreaTest, OnlyTheFieldsThatTheFlagsNameAndTheMaskedStateChange) {
  NOTIFYICONDATAW data = Data(NIF_TIP | NIF_MESSAGE | NIF_STATE);
  std::ranges::fill(data.szTip, L'x');
  data.uCallbackMessage = WM_APP;
  data.dwState = NIS_HIDDEN;
  data.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(std::wstring_view(Icon().szTip).size(), 127u) << "a text that fills its field";

  NOTIFYICONDATAW change = Data(NIF_TIP);
  std::ranges::copy(L"second", change.szTip);
  change.uCallbackMessage = WM_APP + 1;
  change.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &change));
  EXPECT_STREQ(Icon().szTip, L"second");
  EXPECT_EQ(Icon().uCallbackMessage, WM_APP);
  EXPECT_EQ(Icon().dwState, NIS_HIDDEN);

  change.uFlags = NIF_STATE;
  change.dwStateMask = 0;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &change));
  EXPECT_EQ(Icon().dwState, NIS_HIDDEN);
  change.dwStateMask = NIS_HIDDEN;
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &change));
  EXPECT_EQ(Icon().dwState, 0u);
}

TEST_F(NotificationAreaTest, ABalloonIsOnRecordAndAnEmptyOneIsNot) {
  NOTIFYICONDATAW data = Data(NIF_INFO);
  ::testing::internal::CaptureStderr();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  std::ranges::copy(L"Title", data.szInfoTitle);
  std::ranges::copy(L"Text", data.szInfo);
  ::testing::internal::CaptureStderr();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_MODIFY, &data));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "balloon: Title: Text\n");
}

TEST_F(NotificationAreaTest, OtherSizesAndFlagsAreInvalidParameters) {
  NOTIFYICONDATAW data = Data(NIF_INFO);
  data.cbSize = sizeof data - 4;
  NOTIFYICONDATAW flags = Data(0x20);
  EXPECT_EQ(Notify(NIM_ADD, data), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(Notify(NIM_ADD, flags), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(platform::NotificationIcon(window_.Get(), kId).has_value());
  data.cbSize = offsetof(NOTIFYICONDATAW, guidItem);
  EXPECT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
}

TEST_F(NotificationAreaTest, IconsGoWithTheirWindow) {
  NOTIFYICONDATAW data = Data();
  ASSERT_TRUE(::Shell_NotifyIconW(NIM_ADD, &data));
  ::DestroyWindow(window_.Get());
  EXPECT_FALSE(platform::NotificationIcon(window_.Get(), kId).has_value());
  EXPECT_EQ(Notify(NIM_ADD, data), ERROR_INVALID_WINDOW_HANDLE);
}

}  // namespace
