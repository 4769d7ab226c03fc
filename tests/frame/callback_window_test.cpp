// Which object answers a window's messages, from its creation to its end.
#include "frame/callback_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr UINT kThrow = WM_APP;
constexpr UINT kAnswer = WM_APP + 1;

class RecordingWindow final : public CallbackWindow {
 public:
  explicit RecordingWindow(LRESULT answer = 0) : answer_(answer) {}
  std::vector<UINT> messages;

 private:
  LRESULT WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
    messages.push_back(message);
    if (message == kThrow) throw std::runtime_error("thrown");
    if (message == kAnswer || message == WM_CREATE) return answer_;
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  LRESULT answer_;
};

class CallbackWindowTest : public testing::Test {
 protected:
  platform::SimulatedMachine machine_;
};

TEST_F(CallbackWindowTest, TheObjectsFirstMessageIsTheCreation) {
  RecordingWindow window;
  ASSERT_TRUE(window.Create());
  ASSERT_FALSE(window.messages.empty());
  EXPECT_EQ(window.messages.front(), WM_CREATE);
  EXPECT_THAT(window.messages, Not(Contains(WM_NCCREATE)));
}

TEST_F(CallbackWindowTest, EachWindowHasItsOwnObject) {
  RecordingWindow first(11);
  RecordingWindow second(22);
  // Their creation is answered with other than minus one, which lets it go on.
  ASSERT_TRUE(first.Create());
  ASSERT_TRUE(second.Create());
  EXPECT_EQ(::SendMessageW(first.Window(), kAnswer, 0, 0), 11);
  EXPECT_EQ(::SendMessageW(second.Window(), kAnswer, 0, 0), 22);
}

TEST_F(CallbackWindowTest, AnExceptionDoesNotLeaveTheProcedure) {
  RecordingWindow window;
  ASSERT_TRUE(window.Create());
  EXPECT_EQ(::SendMessageW(window.Window(), kThrow, 0, 0), 0);
  EXPECT_THAT(window.messages, Contains(kThrow));
}

TEST_F(CallbackWindowTest, ARefusedCreationLeavesNoWindow) {
  RecordingWindow window(-1);
  EXPECT_FALSE(window.Create());
  EXPECT_EQ(window.Window(), nullptr);
}

TEST_F(CallbackWindowTest, TheWindowEndsWithItsObject) {
  auto window = std::make_unique<RecordingWindow>();
  ASSERT_TRUE(window->Create());
  const HWND handle = window->Window();
  window.reset();
  EXPECT_FALSE(::IsWindow(handle));
}

TEST_F(CallbackWindowTest, AnObjectOutlivesItsWindow) {
  RecordingWindow window;
  ASSERT_TRUE(window.Create());
  ASSERT_TRUE(::DestroyWindow(window.Window()));
  EXPECT_EQ(window.messages.back(), WM_NCDESTROY);
  EXPECT_EQ(window.Window(), nullptr);
}

}  // namespace
}  // namespace quillgate
