// What the notification area is told of the icon, and what the icon makes of its events.
#include "ui/tray_icon.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <stdexcept>

#include "platform/testing/simulated_machine.h"
#include "resources/resource.h"

namespace quillgate {
namespace {

struct RecordingTrayIcon final : TrayIcon {
  void OnButtonDown(MouseButton button) override { Add("down", button); }
  void OnButtonUp(MouseButton button) override {
    Add("up", button);
    if (throws) throw std::runtime_error("thrown");
  }
  void OnDoubleClick() override { events.push_back("double"); }
  void OnBalloonClick() override { events.push_back("balloon"); }
  void Add(const char* what, MouseButton button) {
    events.push_back(what + std::to_string(static_cast<int>(button)));
  }

  std::vector<std::string> events;
  bool throws = false;
};

class TrayIconTest : public testing::Test {
 protected:
  NOTIFYICONDATAW Shown() const {
    return platform::NotificationIcon(icon_.Window(), 0).value_or(NOTIFYICONDATAW{});
  }
  void Send(UINT event) { ::SendMessageW(icon_.Window(), WM_USER + 1, 0, event); }

  platform::SimulatedMachine machine_;
  RecordingTrayIcon icon_;
};

TEST_F(TrayIconTest, IsHiddenUntilItIsShownAndGoesWithItsObject) {
  HWND window = nullptr;
  {
    TrayIcon icon;
    window = icon.Window();
    const auto [change, record] = machine_.NotificationChanges().back();
    EXPECT_EQ(change, NIM_ADD);
    EXPECT_EQ(record.cbSize, offsetof(NOTIFYICONDATAW, guidItem));
    EXPECT_EQ(record.uFlags, 0x1Du);
    EXPECT_EQ(record.uCallbackMessage, 0x401u);
    EXPECT_EQ(record.uTimeout, 10000u);
    EXPECT_EQ(record.dwState & record.dwStateMask, NIS_HIDDEN);
    EXPECT_TRUE(icon.ShowIcon());
    const auto shown = platform::NotificationIcon(window, 0);
    EXPECT_EQ(shown->dwState, 0u);
    EXPECT_EQ(shown->dwStateMask, NIS_HIDDEN);
  }
  EXPECT_EQ(machine_.NotificationChanges().back().first, NIM_DELETE);
  EXPECT_FALSE(::IsWindow(window));
  EXPECT_TRUE(platform::NotificationIcon(icon_.Window(), 0).has_value()) << "another's";
}

TEST_F(TrayIconTest, TheFormerIconLastsUntilTheNewOneIsShown) {
  ASSERT_TRUE(icon_.SetIconHandle(LoadSmallIcon(IDI_CONNECTION_ENABLED)));
  const HICON first = Shown().hIcon;
  ASSERT_NE(first, nullptr);
  ASSERT_TRUE(icon_.SetIconHandle(LoadSmallIcon(IDI_CONNECTION_DISABLED)));
  EXPECT_NE(Shown().hIcon, first);
  EXPECT_FALSE(::DestroyIcon(first));
  EXPECT_EQ(Shown().uFlags & NIF_ICON, NIF_ICON);
}

TEST_F(TrayIconTest, TextsAreCutToTheRoomThereIs) {
  EXPECT_TRUE(icon_.SetTipText(std::wstring(300, L't')));
  EXPECT_EQ(std::wstring(Shown().szTip), std::wstring(127, L't'));
  EXPECT_TRUE(icon_.SetTipText(L"short"));
  EXPECT_STREQ(Shown().szTip, L"short");
  EXPECT_TRUE(icon_.ShowBalloon(std::wstring(300, L'b'), std::wstring(300, L'c'), NIIF_WARNING));
  EXPECT_EQ(std::wstring(Shown().szInfo), std::wstring(255, L'b'));
  EXPECT_EQ(std::wstring(Shown().szInfoTitle), std::wstring(63, L'c'));
  EXPECT_EQ(Shown().dwInfoFlags, NIIF_WARNING);
}

TEST_F(TrayIconTest, ABalloonIsShownOnceAlsoOfAnIconThatWasLost) {
  ASSERT_TRUE(icon_.ShowBalloon(L"text", L"title", NIIF_INFO));
  icon_.SetTipText(L"tip");
  EXPECT_STREQ(Shown().szInfo, L"");
  EXPECT_STREQ(Shown().szInfoTitle, L"");

  platform::ClearNotificationArea();
  EXPECT_FALSE(icon_.ShowBalloon(L"text", L"title", NIIF_ERROR));
  EXPECT_EQ(machine_.NotificationChanges().back().first, NIM_ADD);
  EXPECT_STREQ(Shown().szInfo, L"text");
  EXPECT_STREQ(Shown().szTip, L"tip");
  // On show, it is over for the record too.
  Send(NIN_BALLOONSHOW);
  icon_.SetTipText(L"another");
  EXPECT_STREQ(Shown().szInfo, L"");
}

TEST_F(TrayIconTest, AShellThatRestartsGetsTheIconAsItIsWithWhatWasRefusedMeanwhile) {
  icon_.SetIconHandle(LoadSmallIcon(IDI_CONNECTION_ENABLED));
  const HICON handle = Shown().hIcon;
  platform::ClearNotificationArea();
  EXPECT_FALSE(icon_.SetTipText(L"tip"));
  EXPECT_FALSE(icon_.ShowIcon());
  platform::ClearNotificationArea();
  ::SendMessageW(icon_.Window(), ::RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  EXPECT_EQ(Shown().hIcon, handle);
  EXPECT_STREQ(Shown().szTip, L"tip");
  EXPECT_EQ(Shown().dwState, 0u);
  EXPECT_STREQ(Shown().szInfo, L"");
}

TEST_F(TrayIconTest, EventsReachTheirHandlersAndTheirExceptionsNobody) {
  icon_.throws = true;
  for (const UINT event : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN,
                           WM_RBUTTONUP, NIN_BALLOONUSERCLICK, NIN_BALLOONHIDE})
    Send(event);
  EXPECT_THAT(icon_.events,
              testing::ElementsAre("down1", "up1", "double", "down2", "up2", "balloon"));
}

}  // namespace
}  // namespace quillgate
