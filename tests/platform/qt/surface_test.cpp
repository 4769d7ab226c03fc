// What windows show: their painting, and what is drawn on them otherwise.
#include <QEvent>

#include "platform/qt/window_fixture.h"

namespace {

using ::testing::ElementsAre;

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);

void Fill(HDC context, const RECT& area, COLORREF colour) {
  const HBRUSH brush = ::CreateSolidBrush(colour);
  EXPECT_NE(::FillRect(context, &area, brush), 0);
  ::DeleteObject(brush);
}

bool CanFill(HDC context) {
  const RECT area = {0, 0, 5, 5};
  return ::FillRect(context, &area, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))) != 0;
}

// Outside of a painting.
void DrawOn(HWND window, const std::function<void(HDC)>& draw) {
  const HDC context = ::GetDC(window);
  draw(context);
  EXPECT_EQ(::ReleaseDC(window, context), 1);
}

// What the window's surface holds.
COLORREF Kept(HWND window, int x, int y) {
  COLORREF kept = CLR_INVALID;
  DrawOn(window, [&](HDC context) { kept = ::GetPixel(context, x, y); });
  return kept;
}

class Surface : public WindowOnDesktop {
 protected:
  Surface() {
    On(WM_ERASEBKGND, [this](HWND, WPARAM, LPARAM) -> LRESULT {
      ++erasures_;
      return TRUE;
    });
    OnPaint([this](HWND, const PAINTSTRUCT& paint) {
      Fill(paint.hdc, {0, 0, 1'000, 1'000}, colour_);
      ++paintings_;
      painted_ = paint.rcPaint;
      toErase_ = paint.fErase != FALSE;
    });
  }
  // In a window that is painted red.
  void WithPainted(const std::function<void()>& body, UINT classStyle = 0) {
    const auto start = [&] {
      PumpUntilPainted();
      Forget();
      body();
    };
    WithWindow(start, {.classStyle = classStyle});
  }
  void PumpUntilPainted() {
    Pump([&] { return paintings_ > 0; });
    PumpAll();
  }
  // Damages a part, all when it is null, and has it painted.
  void Repaint(const RECT* part, bool erase = false) const {
    EXPECT_TRUE(::InvalidateRect(window_, part, erase ? TRUE : FALSE));
    EXPECT_TRUE(::UpdateWindow(window_));
  }
  void Forget() {
    paintings_ = erasures_ = 0;
    painted_ = {};
  }

  COLORREF colour_ = kRed;
  int paintings_ = 0;
  int erasures_ = 0;
  RECT painted_{};
  bool toErase_ = false;
};

TEST_F(Surface, AWindowIsFilledWithTheBrushOfItsClassAndPaintedOver) {
  On(WM_ERASEBKGND, [](HWND window, WPARAM context, LPARAM) -> LRESULT {
    return ::DefWindowProcW(window, WM_ERASEBKGND, context, 0);
  });
  OnWindowThread([this] {
    const HBRUSH own = ::CreateSolidBrush(kBlue);
    const auto ofSystem = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_HIGHLIGHT + 1});
    for (const HBRUSH brush : {own, ofSystem}) {
      HDC used = nullptr;
      OnPaint([&](HWND, const PAINTSTRUCT& paint) {
        used = paint.hdc;
        EXPECT_FALSE(paint.fErase);
        Fill(used, {10, 10, 20, 20}, kRed);
      });
      const HWND window = Create(WS_VISIBLE, kPlace, nullptr, {.brush = brush});
      Pump([&] { return used != nullptr; });
      EXPECT_EQ(Seen(window, 9, 15), brush == own ? kBlue : ::GetSysColor(COLOR_HIGHLIGHT));
      EXPECT_EQ(Seen(window, 15, 15), kRed);
      EXPECT_EQ(::SetTextColor(used, 0), CLR_INVALID) << "of no use after the painting";
      ::DestroyWindow(window);
    }
    ::DeleteObject(own);
  });
}

TEST_F(Surface, WhatIsDrawnOutsideOfAPaintingIsSeenSoonAndStaysWhenItHasBeenCovered) {
  WithPainted([this] {
    struct Watch final : QObject {
      bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        isCopied = isCopied || event->type() == QEvent::Paint;
        return false;
      }
      bool isCopied = false;
    } watch;
    WidgetOf(window_)->installEventFilter(&watch);
    DrawOn(window_, [](HDC context) { Fill(context, {15, 25, 40, 40}, kBlue); });
    EXPECT_EQ(Kept(window_, 39, 39), kBlue);
    EXPECT_EQ(Kept(window_, 40, 40), kRed);
    EXPECT_EQ(Kept(window_, 200, 10), CLR_INVALID);
    Pump([&] { return watch.isCopied; });
    ::DestroyWindow(CreateChild(window_));
    PumpAll();
    WidgetOf(window_)->repaint();
    EXPECT_EQ(paintings_, 0) << "the window is asked for what it has shown already";
    EXPECT_EQ(Seen(window_, 20, 30), kBlue);
    EXPECT_EQ(Seen(window_, 50, 45), kRed);
  });
}

TEST_F(Surface, AParentDrawsInItsChildWhileThatPaints) {
  WithPainted([this] {
    const HWND child = CreateChild(window_);
    PumpUntilPainted();
    Hear(WM_APP, [&](HWND, WPARAM, LPARAM) {
      // Outside of what is damaged, too.
      DrawOn(child, [](HDC context) { Fill(context, {2, 2, 40, 8}, kBlue); });
    });
    OnPaint([this](HWND, const PAINTSTRUCT& paint) {
      Fill(paint.hdc, {0, 0, 50, 30}, kWhite);
      ::SendMessageW(window_, WM_APP, 0, 0);
      Fill(paint.hdc, {0, 0, 4, 30}, kWhite);
    });
    const RECT part = {0, 0, 10, 10};
    ::InvalidateRect(child, &part, FALSE);
    ::UpdateWindow(child);
    EXPECT_EQ(Kept(child, 3, 5), kWhite) << "drawn by the child afterwards";
    EXPECT_EQ(Kept(child, 5, 5), kBlue);
    EXPECT_EQ(Kept(child, 30, 5), kBlue) << "the parent is not bound to the damage";
    EXPECT_EQ(Kept(child, 30, 20), kRed) << "the child is bound to the damage";
    PumpAll();
    EXPECT_EQ(Seen(child, 30, 5), kBlue);
  });
}

TEST_F(Surface, APaintingIsClippedToWhatIsDamaged) {
  WithPainted([this] {
    colour_ = kBlue;
    const RECT first = {10, 10, 20, 20};
    const RECT second = {50, 50, 60, 60};
    EXPECT_TRUE(::InvalidateRect(window_, &first, FALSE));
    EXPECT_EQ(paintings_, 0);
    Repaint(&second);
    EXPECT_EQ(paintings_, 1);
    EXPECT_THAT(EdgesOf(painted_), ElementsAre(10, 10, 60, 60));
    EXPECT_EQ(Kept(window_, 10, 10), kBlue);
    EXPECT_EQ(Kept(window_, 59, 59), kBlue);
    EXPECT_EQ(Kept(window_, 9, 10), kRed);
    EXPECT_EQ(Kept(window_, 30, 30), kRed) << "between two damaged parts";
    for (const RECT& outside : {RECT{200, 0, 300, 50}, RECT{0, 100, 50, 150}})
      Repaint(&outside);
    EXPECT_EQ(paintings_, 1) << "nothing is damaged any more";
  });
}

TEST_F(Surface, TheBackgroundIsErasedWhenThatWasAskedFor) {
  WithPainted([this] {
    Repaint(nullptr);
    EXPECT_EQ(erasures_, 0);
    EXPECT_FALSE(toErase_);
    const RECT part = {1, 1, 2, 2};
    ::InvalidateRect(window_, &part, TRUE);
    Repaint(nullptr);
    EXPECT_EQ(erasures_, 1) << "once asked for is enough";
    EXPECT_FALSE(toErase_);
    On(WM_ERASEBKGND, [](HWND, WPARAM, LPARAM) -> LRESULT { return FALSE; });
    Repaint(nullptr, true);
    EXPECT_TRUE(toErase_) << "it is left to the painting";
    Repaint(nullptr);
    EXPECT_FALSE(toErase_);
  });
}

TEST_F(Surface, WhatIsInvalidatedWhileItIsPaintedIsPaintedOnceMore) {
  WithPainted([this] {
    On(WM_ERASEBKGND, [this](HWND handle, WPARAM, LPARAM) -> LRESULT {
      const RECT part = {3, 3, 9, 9};
      if (++erasures_ == 1) ::InvalidateRect(handle, &part, FALSE);
      return TRUE;
    });
    Repaint(nullptr, true);
    Pump([&] { return paintings_ == 2; });
    EXPECT_THAT(EdgesOf(painted_), ElementsAre(3, 3, 9, 9));
  });
}

TEST_F(Surface, AnotherSizePaintsWhatIsNewUnlessTheClassWantsEverything) {
  const struct {
    UINT style;
    int width, height;
    std::vector<LONG> painted;
  } cases[] = {
      {0, 250, 100, {200, 0, 250, 100}},
      {0, 150, 100, {0, 0, 0, 0}},
      {CS_HREDRAW, 190, 100, {0, 0, 190, 100}},
      {CS_HREDRAW, 200, 90, {0, 0, 0, 0}},
      {CS_VREDRAW, 190, 100, {0, 0, 0, 0}},
      {CS_VREDRAW, 200, 90, {0, 0, 200, 90}},
      {CS_HREDRAW | CS_VREDRAW, 190, 90, {0, 0, 190, 90}},
  };
  for (const auto& each : cases) {
    colour_ = kRed;
    const auto resize = [&] {
      colour_ = kBlue;
      ::SetWindowPos(window_, nullptr, 0, 0, each.width, each.height, SWP_NOMOVE | SWP_NOZORDER);
      if (each.painted[2] != 0) PumpUntilPainted();
      PumpAll();
      EXPECT_EQ(EdgesOf(painted_), each.painted) << each.style << " " << each.width;
      EXPECT_EQ(erasures_, each.painted[2] != 0 ? 1 : 0) << "nothing stood there";
      const bool isKept = each.painted[0] != 0 || each.painted[2] == 0;
      EXPECT_EQ(Kept(window_, 149, 50), isKept ? kRed : kBlue);
    };
    WithPainted(resize, each.style);
    Forget();
  }
}

TEST_F(Surface, AHiddenWindowIsNotPaintedAndDrawnOnInVain) {
  WithPainted([this] {
    ::ShowWindow(window_, SW_HIDE);
    DrawOn(window_, [](HDC context) { Fill(context, {0, 0, 50, 50}, kBlue); });
    EXPECT_EQ(Kept(window_, 10, 10), CLR_INVALID);
    Repaint(nullptr, true);
    PumpAll();
    EXPECT_EQ(paintings_, 0);
    ::ShowWindow(window_, SW_SHOW);
    PumpUntilPainted();
    EXPECT_THAT(EdgesOf(painted_), ElementsAre(0, 0, 200, 100));
    EXPECT_EQ(Kept(window_, 10, 10), kRed);
  });
}

TEST_F(Surface, AContextOfAControlOrOfAnEndedWindowDrawsNothing) {
  WithPainted([this] {
    DrawOn(CreateButton(window_), [](HDC context) {
      SIZE size{};
      EXPECT_TRUE(::GetTextExtentPoint32W(context, L"Go", 2, &size));
      EXPECT_GT(size.cx, 0);
      EXPECT_FALSE(CanFill(context));
      EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_SUPPORTED});
    });
    const HDC context = ::GetDC(window_);
    ::DestroyWindow(window_);
    ::SetLastError(0);
    EXPECT_FALSE(CanFill(context));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    PumpAll();
    EXPECT_FALSE(CanFill(context));
    EXPECT_EQ(::ReleaseDC(window_, context), 1);
    EXPECT_EQ(::ReleaseDC(window_, context), 0);
  });
}

TEST_F(Surface, AnotherThreadDrawsOnAWindowToo) {
  WithPainted([this] {
    std::thread other([&] {
      DrawOn(window_, [](HDC context) { Fill(context, {0, 0, 10, 10}, kBlue); });
      ::PostMessageW(window_, WM_APP, 0, 0);
    });
    Pump([&] { return CountOf(WM_APP) == 1; });
    other.join();
    EXPECT_EQ(Kept(window_, 5, 5), kBlue);
  });
}

TEST_F(Surface, AWindowMayEndWhileItIsPaintedByTheDesktopOrAtOnce) {
  WithPainted([this] {
    const HWND other = Create();
    PumpAll();
    OnPaint([](HWND window, const PAINTSTRUCT& paint) {
      ::DestroyWindow(window);
      PumpAll();
      // Whatever a procedure still does with them.
      CanFill(paint.hdc);
      ::TextOutW(paint.hdc, 0, 0, L"x", 1);
    });
    ::InvalidateRect(other, nullptr, FALSE);
    Pump([&] { return !::IsWindow(other); });
    ::InvalidateRect(window_, nullptr, FALSE);
    ::UpdateWindow(window_);
    EXPECT_FALSE(::IsWindow(window_));
    PumpAll();
  });
}

}  // namespace
