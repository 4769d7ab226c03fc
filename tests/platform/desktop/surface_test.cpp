#include <windows.h>

#include <gmock/gmock.h>

#include <QEvent>
#include <thread>

#include "platform/desktop/window_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr RECT kPlace = {60, 70, 260, 170};
constexpr RECT kChildPlace = {10, 20, 60, 50};
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);

class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), context_(::GetDC(window)) {}
  ~WindowDc() { EXPECT_EQ(::ReleaseDC(window_, context_), 1); }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC Get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

void Fill(HDC context, const RECT& area, COLORREF colour) {
  const HBRUSH brush = ::CreateSolidBrush(colour);
  EXPECT_NE(::FillRect(context, &area, brush), 0);
  ::DeleteObject(brush);
}

// What the window's surface holds.
COLORREF Kept(HWND window, int x, int y) {
  const WindowDc context(window);
  return ::GetPixel(context.Get(), x, y);
}

// What the user sees.
COLORREF Seen(QWidget* widget, int x, int y) {
  const QColor colour = widget->grab().toImage().pixelColor(x, y);
  return RGB(colour.red(), colour.green(), colour.blue());
}

class Surface : public WindowOnDesktop {
 protected:
  void SetUp() override {
    WindowOnDesktop::SetUp();
    On(WM_ERASEBKGND, [this](HWND, WPARAM, LPARAM) -> LRESULT {
      ++erasures_;
      return TRUE;
    });
    On(WM_PAINT, [this](HWND window, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint{};
      const HDC context = ::BeginPaint(window, &paint);
      RECT all{};
      ::GetClientRect(window, &all);
      Fill(context, all, colour_);
      ++paintings_;
      painted_ = paint.rcPaint;
      toErase_ = paint.fErase != FALSE;
      ::EndPaint(window, &paint);
      return 0;
    });
  }
  HWND CreatePainted(RECT place = kPlace, HWND parent = nullptr, UINT classStyle = 0) {
    const HWND window = CreateOfStyle(classStyle, place, parent);
    Pump([&] { return paintings_ > 0; });
    PumpAll();
    Forget();
    return window;
  }
  void Forget() {
    paintings_ = erasures_ = 0;
    painted_ = {};
  }
  std::vector<LONG> Painted() const {
    return {painted_.left, painted_.top, painted_.right, painted_.bottom};
  }

  COLORREF colour_ = kRed;
  int paintings_ = 0;
  int erasures_ = 0;
  RECT painted_{};
  bool toErase_ = false;

 private:
  HWND CreateOfStyle(UINT classStyle, const RECT& place, HWND parent) {
    const HWND window =
        Create(L"", place, parent != nullptr ? WS_CHILD : 0, parent, 0, nullptr, classStyle);
    ::ShowWindow(window, SW_SHOW);
    return window;
  }
};

TEST_F(Surface, WhatIsDrawnStaysWhenItHasBeenCovered) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    const HWND cover = Create(L"", kChildPlace, WS_CHILD, window);
    {
      const WindowDc context(window);
      Fill(context.Get(), {15, 25, 40, 40}, kBlue);
    }
    ::ShowWindow(cover, SW_SHOW);
    PumpAll();
    ::ShowWindow(cover, SW_HIDE);
    PumpAll();
    Forget();
    WidgetOf(window)->repaint();
    EXPECT_EQ(paintings_, 0) << "the window is asked for what it has shown already";
    EXPECT_EQ(Seen(WidgetOf(window), 20, 30), kBlue);
    EXPECT_EQ(Seen(WidgetOf(window), 50, 45), kRed);
  });
}

TEST_F(Surface, WhatIsDrawnOutsideOfAPaintingIsSeenSoon) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    class Watch final : public QObject {
     public:
      bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        isCopied = isCopied || event->type() == QEvent::Paint;
        return false;
      }
      bool isCopied = false;
    } watch;
    WidgetOf(window)->installEventFilter(&watch);
    {
      const WindowDc context(window);
      Fill(context.Get(), {0, 0, 10, 10}, kBlue);
      EXPECT_EQ(::GetPixel(context.Get(), 9, 9), kBlue);
      EXPECT_EQ(::GetPixel(context.Get(), 10, 10), kRed);
      EXPECT_EQ(::GetPixel(context.Get(), 200, 10), CLR_INVALID);
    }
    Pump([&] { return watch.isCopied; });
    EXPECT_EQ(paintings_, 0);
  });
}

TEST_F(Surface, AFrameDrawnTwiceByExclusiveOrLeavesNoTrace) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    const WindowDc context(window);
    const HPEN pen = ::CreatePen(PS_SOLID, 3, kWhite);
    const HGDIOBJ penBefore = ::SelectObject(context.Get(), pen);
    const HGDIOBJ brushBefore = ::SelectObject(context.Get(), ::GetStockObject(NULL_BRUSH));
    ::SetROP2(context.Get(), R2_XORPEN);
    EXPECT_TRUE(::Rectangle(context.Get(), 20, 20, 60, 40));
    EXPECT_EQ(::GetPixel(context.Get(), 20, 30), RGB(0, 255, 255));
    EXPECT_TRUE(::Rectangle(context.Get(), 20, 20, 60, 40));
    for (int x = 15; x < 65; ++x)
      EXPECT_EQ(::GetPixel(context.Get(), x, 20), kRed) << x;
    ::SelectObject(context.Get(), penBefore);
    ::SelectObject(context.Get(), brushBefore);
    ::DeleteObject(pen);
  });
}

TEST_F(Surface, AParentDrawsInItsChildWhileThatPaints) {
  OnWindowThread([this] {
    const HWND parent = CreatePainted();
    const HWND child = CreatePainted(kChildPlace, parent);
    On(WM_APP, [&](HWND, WPARAM, LPARAM) -> LRESULT {
      const WindowDc context(child);
      // Outside of what is damaged, too.
      Fill(context.Get(), {2, 2, 40, 8}, kBlue);
      return 0;
    });
    On(WM_PAINT, [&](HWND window, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint{};
      const HDC context = ::BeginPaint(window, &paint);
      Fill(context, {0, 0, 50, 30}, kWhite);
      ::SendMessageW(parent, WM_APP, 0, 0);
      Fill(context, {0, 0, 4, 30}, kWhite);
      ::EndPaint(window, &paint);
      return 0;
    });
    const RECT part = {0, 0, 10, 10};
    ::InvalidateRect(child, &part, FALSE);
    ::UpdateWindow(child);
    EXPECT_EQ(Kept(child, 3, 5), kWhite) << "drawn by the child afterwards";
    EXPECT_EQ(Kept(child, 5, 5), kBlue);
    EXPECT_EQ(Kept(child, 30, 5), kBlue) << "the parent is not bound to the damage";
    EXPECT_EQ(Kept(child, 30, 20), kRed) << "the child is bound to the damage";
    PumpAll();
    EXPECT_EQ(Seen(WidgetOf(child), 30, 5), kBlue);
  });
}

TEST_F(Surface, APaintingIsClippedToWhatIsDamaged) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    colour_ = kBlue;
    const RECT first = {10, 10, 20, 20};
    const RECT second = {50, 50, 60, 60};
    EXPECT_TRUE(::InvalidateRect(window, &first, FALSE));
    EXPECT_TRUE(::InvalidateRect(window, &second, FALSE));
    EXPECT_EQ(paintings_, 0);
    EXPECT_TRUE(::UpdateWindow(window));
    EXPECT_EQ(paintings_, 1);
    EXPECT_THAT(Painted(), ElementsAre(10, 10, 60, 60));
    EXPECT_EQ(Kept(window, 10, 10), kBlue);
    EXPECT_EQ(Kept(window, 59, 59), kBlue);
    EXPECT_EQ(Kept(window, 9, 10), kRed);
    EXPECT_EQ(Kept(window, 30, 30), kRed) << "between two damaged parts";
    EXPECT_TRUE(::UpdateWindow(window));
    EXPECT_EQ(paintings_, 1) << "nothing is damaged any more";
  });
}

TEST_F(Surface, TheBackgroundIsErasedWhenThatWasAskedFor) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    ::InvalidateRect(window, nullptr, FALSE);
    ::UpdateWindow(window);
    EXPECT_EQ(erasures_, 0);
    EXPECT_FALSE(toErase_);
    const RECT part = {1, 1, 2, 2};
    ::InvalidateRect(window, &part, TRUE);
    ::InvalidateRect(window, nullptr, FALSE);
    ::UpdateWindow(window);
    EXPECT_EQ(erasures_, 1) << "once asked for is enough";
    EXPECT_FALSE(toErase_);
    On(WM_ERASEBKGND, [](HWND, WPARAM, LPARAM) -> LRESULT { return FALSE; });
    ::InvalidateRect(window, nullptr, TRUE);
    ::UpdateWindow(window);
    EXPECT_TRUE(toErase_) << "it is left to the painting";
    ::InvalidateRect(window, nullptr, FALSE);
    ::UpdateWindow(window);
    EXPECT_FALSE(toErase_);
  });
}

TEST_F(Surface, WhatIsInvalidatedWhileItIsPaintedIsPaintedOnceMore) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    On(WM_ERASEBKGND, [this](HWND handle, WPARAM, LPARAM) -> LRESULT {
      const RECT part = {3, 3, 9, 9};
      if (++erasures_ == 1) ::InvalidateRect(handle, &part, FALSE);
      return TRUE;
    });
    ::InvalidateRect(window, nullptr, TRUE);
    ::UpdateWindow(window);
    Pump([&] { return paintings_ == 2; });
    EXPECT_THAT(Painted(), ElementsAre(3, 3, 9, 9));
  });
}

TEST_F(Surface, OnlyWhatIsNewOfALargerWindowIsPainted) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    colour_ = kBlue;
    ::SetWindowPos(window, nullptr, 0, 0, 250, 100, SWP_NOMOVE | SWP_NOZORDER);
    Pump([&] { return paintings_ > 0; });
    EXPECT_THAT(Painted(), ElementsAre(200, 0, 250, 100));
    EXPECT_EQ(erasures_, 1) << "nothing stood there";
    EXPECT_EQ(Kept(window, 199, 50), kRed);
    EXPECT_EQ(Kept(window, 200, 50), kBlue);
    Forget();
    ::SetWindowPos(window, nullptr, 0, 0, 150, 100, SWP_NOMOVE | SWP_NOZORDER);
    PumpAll();
    EXPECT_EQ(paintings_, 0) << "a smaller one has all it shows";
  });
}

TEST_F(Surface, AClassMayWantEverythingPaintedWithAnotherSize) {
  const struct {
    UINT style;
    LONG width, height;
    bool isPainted;
  } cases[] = {
      {CS_HREDRAW, 190, 100, true},
      {CS_HREDRAW, 200, 90, false},
      {CS_VREDRAW, 190, 100, false},
      {CS_VREDRAW, 200, 90, true},
      {CS_HREDRAW | CS_VREDRAW, 190, 90, true},
  };
  for (const auto& each : cases) {
    OnWindowThread([&] {
      const HWND window = CreatePainted(kPlace, nullptr, each.style);
      ::SetWindowPos(window, nullptr, 0, 0, each.width, each.height, SWP_NOMOVE | SWP_NOZORDER);
      PumpAll();
      EXPECT_EQ(paintings_ > 0, each.isPainted) << each.style << " " << each.width;
      const RECT whole = each.isPainted ? RECT{0, 0, each.width, each.height} : RECT{};
      EXPECT_THAT(Painted(), ElementsAre(whole.left, whole.top, whole.right, whole.bottom));
      EXPECT_EQ(erasures_ > 0, each.isPainted);
    });
    Forget();
  }
}

TEST_F(Surface, AHiddenWindowIsDrawnOnInVain) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    ::ShowWindow(window, SW_HIDE);
    {
      const WindowDc context(window);
      Fill(context.Get(), {0, 0, 50, 50}, kBlue);
      EXPECT_EQ(::GetPixel(context.Get(), 10, 10), CLR_INVALID);
    }
    ::ShowWindow(window, SW_SHOW);
    Pump([&] { return paintings_ > 0; });
    EXPECT_THAT(Painted(), ElementsAre(0, 0, 200, 100));
    EXPECT_EQ(Kept(window, 10, 10), kRed);
  });
}

TEST_F(Surface, AContextOutlivesItsWindow) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    const HDC context = ::GetDC(window);
    ::DestroyWindow(window);
    const RECT area = {0, 0, 5, 5};
    ::SetLastError(0);
    const auto brush = static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
    EXPECT_EQ(::FillRect(context, &area, brush), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    PumpAll();
    EXPECT_EQ(::FillRect(context, &area, brush), 0);
    EXPECT_EQ(::ReleaseDC(window, context), 1);
    EXPECT_EQ(::ReleaseDC(window, context), 0);
  });
}

TEST_F(Surface, AControlIsMeasuredWithButNotDrawnOn) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    const HWND button = ::CreateWindowExW(0, L"Button", L"Go", WS_CHILD | WS_VISIBLE, 10, 10, 80,
                                          24, window, nullptr, nullptr, nullptr);
    const WindowDc context(button);
    SIZE size{};
    EXPECT_TRUE(::GetTextExtentPoint32W(context.Get(), L"Go", 2, &size));
    EXPECT_GT(size.cx, 0);
    const RECT area = {0, 0, 5, 5};
    EXPECT_EQ(::FillRect(context.Get(), &area, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))),
              0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_SUPPORTED});
  });
}

TEST_F(Surface, AnotherThreadDrawsOnAWindowToo) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    bool isDone = false;
    std::thread other([&] {
      {
        const WindowDc context(window);
        Fill(context.Get(), {0, 0, 10, 10}, kBlue);
      }
      ::PostMessageW(window, WM_APP, 0, 0);
    });
    On(WM_APP, [&](HWND, WPARAM, LPARAM) -> LRESULT { return isDone = true; });
    Pump([&] { return isDone; });
    other.join();
    EXPECT_EQ(Kept(window, 5, 5), kBlue);
  });
}

TEST_F(Surface, AWindowMayEndWhileItIsPaintedAtOnce) {
  OnWindowThread([this] {
    const HWND window = CreatePainted();
    On(WM_PAINT, [](HWND handle, WPARAM, LPARAM) -> LRESULT {
      PAINTSTRUCT paint{};
      const HDC context = ::BeginPaint(handle, &paint);
      ::DestroyWindow(handle);
      PumpAll();
      const RECT area = {0, 0, 5, 5};
      ::FillRect(context, &area, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
      return 0;
    });
    ::InvalidateRect(window, nullptr, FALSE);
    ::UpdateWindow(window);
    EXPECT_FALSE(::IsWindow(window));
    PumpAll();
  });
}

}  // namespace
