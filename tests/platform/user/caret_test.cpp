#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "platform/kit/recording_window.h"

namespace {

class Caret : public ::testing::Test {
 protected:
  void TearDown() override { ::DestroyCaret(); }

  Recording recording_;
  const HWND window_ = Recording::Create();
  const HWND other_ = Recording::Create();
};

TEST_F(Caret, OnlyTheWindowThatHasItMayShowIt) {
  EXPECT_FALSE(::ShowCaret(window_));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_FALSE(::DestroyCaret());
  EXPECT_FALSE(::SetCaretPos(1, 2));
  EXPECT_TRUE(::CreateCaret(window_, nullptr, 3, 12));
  EXPECT_TRUE(::ShowCaret(window_));
  std::thread([this] { EXPECT_FALSE(::ShowCaret(window_)) << "another thread's"; }).join();
  EXPECT_FALSE(::ShowCaret(other_));
  EXPECT_FALSE(::HideCaret(other_));
  EXPECT_TRUE(::HideCaret(nullptr)) << "whichever has it";
  EXPECT_TRUE(::CreateCaret(other_, nullptr, 0, 0));
  EXPECT_FALSE(::HideCaret(window_)) << "a new one ends the one before";
  EXPECT_TRUE(::DestroyCaret());
  EXPECT_FALSE(::DestroyCaret());
}

TEST_F(Caret, ItsPlaceIsKeptAsLongAsItsWindow) {
  POINT place = {7, 7};
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, 0);
  ::CreateCaret(window_, nullptr, 3, 12);
  EXPECT_TRUE(::SetCaretPos(-4, 15));
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, -4);
  EXPECT_EQ(place.y, 15);
  ::DestroyWindow(window_);
  EXPECT_FALSE(::SetCaretPos(1, 1));
  EXPECT_FALSE(::DestroyCaret());
}

}  // namespace
