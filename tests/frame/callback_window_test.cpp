// Which object answers a window's messages, from its creation to its end.
#include "frame/callback_window.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <vector>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::Not;

constexpr UINT kThrow = WM_APP;
constexpr UINT kAnswer = WM_APP + 1;

struct RecordingWindow final : CallbackWindow {
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    messages.push_back(message);
    if (message == kThrow) throw std::runtime_error("thrown");
    if (message == kAnswer || message == WM_CREATE) return answer;
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  LRESULT answer = 0;
  std::vector<UINT> messages;
};

class CallbackWindowTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(CallbackWindowTest, EachObjectAnswersItsOwnWindowFromItsCreationOnAndThrowsNothing) {
  RecordingWindow first;
  RecordingWindow second;
  RecordingWindow refusing;
  // Of the creation too, which goes on unless it is minus one.
  first.answer = 11;
  second.answer = 22;
  refusing.answer = -1;
  ASSERT_TRUE(first.Create());
  ASSERT_TRUE(second.Create());
  EXPECT_FALSE(refusing.Create());
  EXPECT_EQ(refusing.Window(), nullptr);
  ASSERT_FALSE(first.messages.empty());
  EXPECT_EQ(first.messages.front(), WM_CREATE);
  EXPECT_THAT(first.messages, Not(Contains(WM_NCCREATE)));
  EXPECT_EQ(::SendMessageW(first.Window(), kAnswer, 0, 0), 11);
  EXPECT_EQ(::SendMessageW(second.Window(), kAnswer, 0, 0), 22);
  EXPECT_EQ(::SendMessageW(second.Window(), kThrow, 0, 0), 0);
  EXPECT_THAT(second.messages, Contains(kThrow));
}

TEST_F(CallbackWindowTest, TheWindowEndsWithItsObjectWhichMayOutliveIt) {
  HWND handle = nullptr;
  {
    RecordingWindow window;
    ASSERT_TRUE(window.Create());
    ASSERT_TRUE(::DestroyWindow(window.Window()));
    EXPECT_EQ(window.messages.back(), WM_NCDESTROY);
    EXPECT_EQ(window.Window(), nullptr);
    ASSERT_TRUE(window.Create());
    handle = window.Window();
  }
  EXPECT_FALSE(::IsWindow(handle));
}

}  // namespace
}  // namespace quillgate
