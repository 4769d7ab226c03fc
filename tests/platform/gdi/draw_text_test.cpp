// DrawText, looked at by where there is ink.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/gdi/desktop_thread.h"
#include "platform/gdi/drawing_surface.h"
#include "platform/gdi/font_handle.h"

namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 120;
constexpr COLORREF kBlue = RGB(0, 0, 255);

bool operator==(const RECT& one, const RECT& other) {
  return one.left == other.left && one.top == other.top && one.right == other.right &&
         one.bottom == other.bottom;
}

// A white surface with a font of which a line is 20 pixels high.
class Page {
 public:
  Page() : surface_(kWidth, kHeight), font_(L"", 20) {
    before_ = ::SelectObject(surface_.Get(), font_.Get());
    ::SetBkMode(surface_.Get(), TRANSPARENT);
    lineHeight_ = Extent(L"x").cy;
  }
  ~Page() { ::SelectObject(surface_.Get(), before_); }
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;

  HDC Get() const { return surface_.Get(); }
  const DrawingSurface& Surface() const { return surface_; }
  int LineHeight() const { return lineHeight_; }
  SIZE Extent(std::wstring_view text) const { return ExtentOf(surface_.Get(), font_.Get(), text); }

  // On a page that is empty again; gives the function's result.
  int Draw(std::wstring_view text, RECT area, UINT format) const {
    surface_.Clear();
    return ::DrawTextW(Get(), text.data(), static_cast<int>(text.size()), &area,
                       format | DT_NOPREFIX);
  }
  RECT Measure(std::wstring_view text, RECT area, UINT format) const {
    EXPECT_GT(Draw(text, area, format), 0);
    EXPECT_GT(::DrawTextW(Get(), text.data(), static_cast<int>(text.size()), &area,
                          format | DT_NOPREFIX | DT_CALCRECT),
              0);
    return area;
  }
  // Everything that shows.
  std::vector<COLORREF> Pixels() const {
    std::vector<COLORREF> pixels;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x)
        pixels.push_back(surface_.At(x, y));
    }
    return pixels;
  }
  RECT Ink() const { return surface_.Ink().value_or(RECT{}); }
  bool IsBlank(const RECT& area) const {
    for (int y = area.top; y < area.bottom; ++y) {
      for (int x = area.left; x < area.right; ++x) {
        if (surface_.At(x, y) != RGB(255, 255, 255)) return false;
      }
    }
    return true;
  }

 private:
  DrawingSurface surface_;
  FontHandle font_;
  HGDIOBJ before_;
  int lineHeight_;
};

constexpr RECT kArea{20, 10, 180, 110};

TEST(DrawText, ASingleLineIsPlacedInBothDirections) {
  OnDesktop([] {
    const Page page;
    const SIZE size = page.Extent(L"Some text");
    const int middle = 10 + (100 - page.LineHeight()) / 2;
    struct Case {
      UINT format;
      int left;
      int top;
      int result;
    };
    const int height = page.LineHeight();
    for (const auto& [format, left, top, result] :
         {Case{DT_LEFT | DT_TOP, 20, 10, height},
          Case{DT_CENTER | DT_TOP, static_cast<int>(20 + (160 - size.cx) / 2), 10, height},
          Case{DT_RIGHT | DT_VCENTER, static_cast<int>(180 - size.cx), middle,
               middle - 10 + height},
          Case{DT_LEFT | DT_BOTTOM, 20, 110 - height, 100}}) {
      EXPECT_EQ(page.Draw(L"Some text", kArea, format | DT_SINGLELINE), result) << format;
      const std::vector<COLORREF> drawn = page.Pixels();
      page.Surface().Clear();
      ::TextOutW(page.Get(), left, top, L"Some text", 9);
      EXPECT_EQ(drawn, page.Pixels()) << format;
    }
  });
}

TEST(DrawText, OnlyASingleLineIsPlacedInTheHeight) {
  OnDesktop([] {
    const Page page;
    EXPECT_EQ(page.Draw(L"Text", kArea, DT_VCENTER), page.LineHeight());
    EXPECT_LT(page.Ink().bottom, 10 + page.LineHeight());
  });
}

TEST(DrawText, NothingIsDrawnOutsideOfTheAreaUnlessAskedTo) {
  OnDesktop([] {
    const Page page;
    const RECT narrow{50, 30, 90, 40};
    for (const UINT format : {UINT{DT_LEFT}, UINT{DT_CENTER}, UINT{DT_RIGHT}}) {
      page.Draw(L"ÅWgjyWÅWgjyW", narrow, format | DT_SINGLELINE | DT_VCENTER);
      const RECT ink = page.Ink();
      EXPECT_GE(ink.left, 50);
      EXPECT_GE(ink.top, 30);
      EXPECT_LE(ink.right, 90);
      EXPECT_LE(ink.bottom, 40);
    }
    page.Draw(L"ÅWgjyWÅWgjyW", narrow, DT_SINGLELINE | DT_NOCLIP);
    EXPECT_GT(page.Ink().right, 90);
    EXPECT_GT(page.Ink().bottom, 40);
    // And what is drawn next is not clipped any more.
    page.Surface().Clear();
    ::TextOutW(page.Get(), 100, 60, L"W", 1);
    EXPECT_TRUE(page.Surface().Ink().has_value());
  });
}

TEST(DrawText, ATooLongLineEndsInDotsThatFit) {
  OnDesktop([] {
    const Page page;
    const RECT area{10, 10, 110, 40};
    constexpr UINT kFormat = DT_SINGLELINE | DT_END_ELLIPSIS;
    page.Draw(L"A text that is far too long for it", area, kFormat);
    const std::vector<COLORREF> drawn = page.Pixels();
    const RECT ink = page.Ink();
    EXPECT_LE(ink.right, 110);
    EXPECT_GT(ink.right, 110 - page.Extent(L"W").cx - page.Extent(L"..").cx);
    // The dots stand on the base line and leave the rest of their place blank.
    const int dots = page.Extent(L"...").cx;
    EXPECT_TRUE(page.IsBlank({ink.right - dots + 2, 10, 110, 10 + page.LineHeight() / 2}));
    // The longest beginning that leaves room for them, or one letter less, since the dots may move
    // closer to some letters.
    const std::wstring text = L"A text that is far too long for it";
    std::size_t fitting = text.size();
    while (page.Extent(text.substr(0, fitting) + L"...").cx > 100)
      --fitting;
    page.Draw(text.substr(0, fitting) + L"...", area, DT_SINGLELINE);
    const std::vector<COLORREF> longest = page.Pixels();
    page.Draw(text.substr(0, fitting - 1) + L"...", area, DT_SINGLELINE);
    EXPECT_TRUE(drawn == longest || drawn == page.Pixels());
    // What fits has none.
    page.Draw(L"Short", area, kFormat);
    const std::vector<COLORREF> fits = page.Pixels();
    page.Draw(L"Short", area, DT_SINGLELINE);
    EXPECT_EQ(fits, page.Pixels());
  });
}

TEST(DrawText, WordsAreBrokenBetweenWithoutTheirSpaces) {
  OnDesktop([] {
    const Page page;
    const int width = page.Extent(L"first second").cx;
    const RECT area{10, 10, 10 + width + 2, 110};
    EXPECT_EQ(page.Draw(L"first second   third", area, DT_WORDBREAK), 2 * page.LineHeight());
    const std::vector<COLORREF> broken = page.Pixels();
    EXPECT_EQ(page.Draw(L"first second\r\nthird", area, DT_LEFT), 2 * page.LineHeight());
    EXPECT_EQ(broken, page.Pixels());
    EXPECT_EQ(page.Draw(L"first second\nthird", area, DT_LEFT), 2 * page.LineHeight());
    EXPECT_EQ(broken, page.Pixels());
    EXPECT_EQ(page.Draw(L"first second\nthird", area, DT_SINGLELINE), page.LineHeight());
    EXPECT_LT(page.Ink().bottom, 10 + page.LineHeight());
  });
}

TEST(DrawText, ALongWordIsBrokenAsInAnEditControlOnly) {
  OnDesktop([] {
    const Page page;
    const RECT area{10, 10, 60, 110};
    EXPECT_EQ(page.Draw(L"Wwwwwwwwwwwwww x", area, DT_WORDBREAK), 2 * page.LineHeight());
    const int lines =
        page.Draw(L"Wwwwwwwwwwwwww", area, DT_WORDBREAK | DT_EDITCONTROL) / page.LineHeight();
    const int width = page.Extent(L"Wwwwwwwwwwwwww").cx;
    EXPECT_GE(lines, (width + 49) / 50);
    EXPECT_LE(lines, width / 30);
    EXPECT_LE(page.Ink().right, 60);
  });
}

TEST(DrawText, AnEditControlShowsNoPartOfALastLine) {
  OnDesktop([] {
    const Page page;
    const RECT area{10, 10, 100, 10 + 2 * page.LineHeight() + page.LineHeight() / 2};
    EXPECT_EQ(page.Draw(L"one\ntwo\nthree", area, DT_EDITCONTROL), 2 * page.LineHeight());
    EXPECT_LE(page.Ink().bottom, 10 + 2 * page.LineHeight());
    page.Draw(L"one\ntwo\nthree", area, DT_LEFT);
    EXPECT_GT(page.Ink().bottom, 10 + 2 * page.LineHeight());
  });
}

TEST(DrawText, DotsTellOfLinesThatHaveNoRoom) {
  OnDesktop([] {
    const Page page;
    const RECT area{10, 10, 10 + static_cast<LONG>(page.Extent(L"second third").cx),
                    10 + 2 * page.LineHeight() + 3};
    constexpr UINT kFormat = DT_WORDBREAK | DT_END_ELLIPSIS;
    EXPECT_EQ(page.Draw(L"first word second third fourth", area, kFormat), 2 * page.LineHeight());
    const std::vector<COLORREF> drawn = page.Pixels();
    page.Draw(L"first word\nsecond third fourth", area, DT_LEFT);
    EXPECT_NE(drawn, page.Pixels()) << "there are dots";
    EXPECT_LE(page.Ink().bottom, 10 + 2 * page.LineHeight());
    // Also when it is a line of its own that is missing.
    page.Draw(L"first\na\nb", area, kFormat);
    const std::vector<COLORREF> missing = page.Pixels();
    page.Draw(L"first\na...", area, DT_LEFT);
    EXPECT_EQ(missing, page.Pixels());
  });
}

TEST(DrawText, MeasuringGivesTheRoomThatDrawingTakes) {
  OnDesktop([] {
    const Page page;
    const SIZE line = page.Extent(L"Some text");
    EXPECT_TRUE(page.Measure(L"Some text", kArea, DT_SINGLELINE) ==
                (RECT{20, 10, 20 + line.cx, 10 + line.cy}));
    EXPECT_EQ(page.Surface().Ink().has_value(), true);
    EXPECT_TRUE(page.Measure(L"a\nSome text\nb", kArea, DT_LEFT) ==
                (RECT{20, 10, 20 + line.cx, 10 + 3 * line.cy}));
    // Even below the area's bottom.
    EXPECT_TRUE(page.Measure(L"Some text Some text", {0, 0, line.cx + 1, 1}, DT_WORDBREAK) ==
                (RECT{0, 0, line.cx, 2 * line.cy}));
  });
}

TEST(DrawText, MeasuringDrawsNothing) {
  OnDesktop([] {
    const Page page;
    RECT area = kArea;
    EXPECT_GT(::DrawTextW(page.Get(), L"Text", -1, &area, DT_CALCRECT), 0);
    EXPECT_FALSE(page.Surface().Ink().has_value());
    const HDC screen = ::GetDC(nullptr);
    EXPECT_GT(::DrawTextW(screen, L"Text", -1, &area, DT_CALCRECT), 0);
    EXPECT_EQ(::DrawTextW(screen, L"Text", -1, &area, DT_LEFT), 0);
    ::ReleaseDC(nullptr, screen);
  });
}

TEST(DrawText, AnAmpersandMarksTheNextLetterUnlessToldNotTo) {
  OnDesktop([] {
    const Page page;
    const auto width = [&](LPCWSTR text, UINT format) {
      RECT area = kArea;
      ::DrawTextW(page.Get(), text, -1, &area, format | DT_CALCRECT | DT_SINGLELINE);
      return area.right - area.left;
    };
    EXPECT_EQ(width(L"&File && more", DT_LEFT), page.Extent(L"File & more").cx);
    EXPECT_EQ(width(L"&File", DT_NOPREFIX), page.Extent(L"&File").cx);
    RECT area = kArea;
    page.Surface().Clear();
    ::DrawTextW(page.Get(), L"mm&m", -1, &area, DT_SINGLELINE);
    const std::vector<COLORREF> marked = page.Pixels();
    page.Draw(L"mmm", kArea, DT_SINGLELINE);
    const LONG bottom = page.Ink().bottom;
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(page.Get(), &metrics);
    EXPECT_LT(bottom, 10 + metrics.tmAscent + 2) << "nothing below the letters";
    for (int x = 0; x < page.Extent(L"mmm").cx; ++x) {
      const bool isMarked = x >= page.Extent(L"mm").cx;
      const int at = (10 + metrics.tmAscent + 1) * kWidth + 20 + x;
      EXPECT_EQ(marked[static_cast<std::size_t>(at)] == RGB(0, 0, 0), isMarked) << x;
    }
  });
}

TEST(DrawText, AnOpaqueBackgroundEndsWithTheArea) {
  OnDesktop([] {
    const Page page;
    ::SetBkMode(page.Get(), OPAQUE);
    ::SetBkColor(page.Get(), kBlue);
    page.Draw(L"        ", {10, 10, 20, 15}, DT_SINGLELINE);
    EXPECT_TRUE(page.Ink() == (RECT{10, 10, 20, 15}));
  });
}

TEST(DrawText, ManyTextsOneAfterTheOtherLookAsTheyDoAlone) {
  OnDesktop([] {
    const Page page;
    page.Draw(L"12345", kArea, DT_SINGLELINE);
    const std::vector<COLORREF> first = page.Pixels();
    // More than are kept, so that some have been dropped.
    for (int i = 0; i < 12'000; ++i)
      page.Extent(std::to_wstring(i));
    page.Draw(L"12345", kArea, DT_SINGLELINE);
    EXPECT_EQ(first, page.Pixels());
  });
}

TEST(DrawText, WhatIsNotKnownIsRefused) {
  OnDesktop([] {
    const Page page;
    RECT area = kArea;
    wchar_t text[] = L"Text";
    constexpr UINT kExpandTabs = 0x40;
    const auto refused = [&](int result) {
      EXPECT_EQ(result, 0);
      EXPECT_EQ(::GetLastError(), ERROR_INVALID_PARAMETER);
      ::SetLastError(NO_ERROR);
    };
    refused(::DrawTextExW(page.Get(), text, -1, &area, kExpandTabs, nullptr));
    DRAWTEXTPARAMS parameters{sizeof parameters, 0, 1, 1, 0};
    refused(::DrawTextExW(page.Get(), text, -1, &area, DT_LEFT, &parameters));
    refused(::DrawTextW(page.Get(), text, -2, &area, DT_LEFT));
    refused(::DrawTextW(page.Get(), nullptr, 3, &area, DT_LEFT));
    refused(::DrawTextW(page.Get(), text, -1, nullptr, DT_LEFT));
    EXPECT_EQ(::DrawTextW(nullptr, text, -1, &area, DT_LEFT), 0);
    EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_FALSE(page.Surface().Ink().has_value());
  });
}

}  // namespace
