#include <windows.h>

#include <gtest/gtest.h>

#include <thread>

#include "platform/user/recording_window.h"

namespace {

class Caret : public ::testing::Test {
 protected:
  void TearDown() override {
    ::DestroyCaret();
    ::DestroyWindow(window_);
    ::DestroyWindow(other_);
  }

  Recording recording_;
  HWND window_ = Recording::Create();
  HWND other_ = Recording::Create();
};

TEST_F(Caret, OnlyTheWindowThatHasItMayShowIt) {
  EXPECT_FALSE(::ShowCaret(window_));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  EXPECT_FALSE(::DestroyCaret());
  EXPECT_FALSE(::SetCaretPos(1, 2));
  EXPECT_TRUE(::CreateCaret(window_, nullptr, 3, 12));
  EXPECT_TRUE(::ShowCaret(window_));
  EXPECT_FALSE(::ShowCaret(other_));
  EXPECT_FALSE(::HideCaret(other_));
  EXPECT_TRUE(::HideCaret(nullptr)) << "whichever has it";
  EXPECT_TRUE(::CreateCaret(other_, nullptr, 0, 0));
  EXPECT_FALSE(::HideCaret(window_)) << "a new one ends the one before";
  EXPECT_TRUE(::DestroyCaret());
  EXPECT_FALSE(::DestroyCaret());
}

TEST_F(Caret, ItsPlaceIsKept) {
  POINT place = {7, 7};
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, 0);
  ::CreateCaret(window_, nullptr, 3, 12);
  EXPECT_TRUE(::SetCaretPos(-4, 15));
  EXPECT_TRUE(::GetCaretPos(&place));
  EXPECT_EQ(place.x, -4);
  EXPECT_EQ(place.y, 15);
  EXPECT_FALSE(::GetCaretPos(nullptr));
  EXPECT_EQ(::GetCaretBlinkTime(), 530u);
}

TEST_F(Caret, ItEndsWithItsWindow) {
  ::CreateCaret(window_, nullptr, 3, 12);
  ::DestroyWindow(window_);
  EXPECT_FALSE(::SetCaretPos(1, 1));
  EXPECT_FALSE(::DestroyCaret());
}

TEST_F(Caret, EachThreadHasItsOwn) {
  ::CreateCaret(window_, nullptr, 3, 12);
  std::thread([this] {
    EXPECT_FALSE(::ShowCaret(window_));
    EXPECT_FALSE(::CreateCaret(window_, nullptr, 3, 12)) << "in another thread's window";
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_ACCESS_DENIED});
  }).join();
  EXPECT_TRUE(::ShowCaret(window_));
}

TEST_F(Caret, WhatCannotBeIsRefused) {
  EXPECT_FALSE(::CreateCaret(nullptr, nullptr, 1, 1));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_WINDOW_HANDLE});
  const auto grey = reinterpret_cast<HBITMAP>(UINT_PTR{1});
  EXPECT_FALSE(::CreateCaret(window_, grey, 1, 1));
  EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
}

}  // namespace
