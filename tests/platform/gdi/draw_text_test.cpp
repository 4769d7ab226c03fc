// DrawText, looked at by where there is ink.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/gdi/drawing_surface.h"

namespace {

using Pixels = std::vector<COLORREF>;

constexpr RECT kArea{20, 10, 180, 110};

// With a font of which a line is 20 pixels high.
class DrawText : public DrawingTest {
 protected:
  DrawText() { ::SetBkMode(page_, TRANSPARENT); }

  LONG Width(std::wstring_view text) const { return ExtentOf(page_, text).cx; }

  // On a page that is empty again; gives the function's result.
  int Draw(std::wstring_view text, RECT area, UINT format) const {
    surface_.Clear();
    return ::DrawTextW(page_, text.data(), static_cast<int>(text.size()), &area,
                       format | DT_NOPREFIX);
  }
  Pixels Drawn(std::wstring_view text, const RECT& area, UINT format) const {
    EXPECT_GT(Draw(text, area, format), 0);
    return surface_.Pixels();
  }
  RECT Measured(std::wstring_view text, RECT area, UINT format) const {
    const int length = static_cast<int>(text.size());
    EXPECT_GT(::DrawTextW(page_, text.data(), length, &area, format | DT_CALCRECT), 0);
    return area;
  }
  RECT Ink() const { return surface_.Ink(); }

  const Selected font_{page_, NewFont(L"", 20)};
  const LONG lineHeight_ = ExtentOf(page_, L"x").cy;
};

TEST_F(DrawText, ASingleLineIsPlacedInBothDirectionsAndSeveralInTheWidthOnly) {
  const LONG width = Width(L"Some text");
  const LONG middle = 10 + (100 - lineHeight_) / 2;
  struct Case {
    UINT format;
    LONG left, top, result;
  };
  for (const auto& [format, left, top, result] : {
           Case{DT_SINGLELINE | DT_LEFT | DT_TOP, 20, 10, lineHeight_},
           Case{DT_SINGLELINE | DT_CENTER | DT_TOP, 20 + (160 - width) / 2, 10, lineHeight_},
           Case{DT_SINGLELINE | DT_RIGHT | DT_VCENTER, 180 - width, middle,
                middle - 10 + lineHeight_},
           Case{DT_SINGLELINE | DT_LEFT | DT_BOTTOM, 20, 110 - lineHeight_, 100},
           Case{DT_RIGHT | DT_VCENTER, 180 - width, 10, lineHeight_},
       }) {
    EXPECT_EQ(Draw(L"Some text", kArea, format), result) << format;
    const Pixels drawn = surface_.Pixels();
    surface_.Clear();
    ::TextOutW(page_, static_cast<int>(left), static_cast<int>(top), L"Some text", 9);
    EXPECT_EQ(drawn, surface_.Pixels()) << format;
  }
}

TEST_F(DrawText, NothingIsDrawnOutsideOfTheAreaUnlessAskedTo) {
  const RECT narrow{50, 30, 90, 40};
  for (const UINT format : {UINT{DT_LEFT}, UINT{DT_CENTER}, UINT{DT_RIGHT}}) {
    Draw(L"ÅWgjyWÅWgjyW", narrow, format | DT_SINGLELINE | DT_VCENTER);
    EXPECT_PRED2(IsWithin, Ink(), narrow) << format;
  }
  Draw(L"ÅWgjyWÅWgjyW", narrow, DT_SINGLELINE | DT_NOCLIP);
  EXPECT_GT(Ink().right, 90);
  EXPECT_GT(Ink().bottom, 40);
  // And what is drawn next is not clipped any more.
  surface_.Clear();
  ::TextOutW(page_, 100, 60, L"W", 1);
  EXPECT_GT(Ink().right, 100);
  // An opaque background ends there too.
  ::SetBkMode(page_, OPAQUE);
  ::SetBkColor(page_, kBlue);
  Draw(L"        ", {10, 10, 20, 15}, DT_SINGLELINE);
  EXPECT_EQ(Ink(), (RECT{10, 10, 20, 15}));
}

TEST_F(DrawText, ATooLongLineEndsInDotsThatFit) {
  const std::wstring text = L"A text that is far too long for it";
  const RECT area{10, 10, 110, 40};
  constexpr UINT kFormat = DT_SINGLELINE | DT_END_ELLIPSIS;
  const Pixels drawn = Drawn(text, area, kFormat);
  EXPECT_LE(Ink().right, 110);
  // The longest beginning that leaves room for them, or one letter less, since the dots may move
  // closer to some letters.
  std::size_t fitting = text.size();
  while (Width(text.substr(0, fitting) + L"...") > 100)
    --fitting;
  EXPECT_TRUE(drawn == Drawn(text.substr(0, fitting) + L"...", area, DT_SINGLELINE) ||
              drawn == Drawn(text.substr(0, fitting - 1) + L"...", area, DT_SINGLELINE));
  EXPECT_EQ(Drawn(L"Short", area, kFormat), Drawn(L"Short", area, DT_SINGLELINE));
}

TEST_F(DrawText, WordsAreBrokenBetweenWithoutTheirSpaces) {
  const RECT area{10, 10, 10 + Width(L"first second") + 2, 110};
  EXPECT_EQ(Draw(L"first second   third", area, DT_WORDBREAK), 2 * lineHeight_);
  const Pixels broken = surface_.Pixels();
  for (const wchar_t* lines : {L"first second\r\nthird", L"first second\nthird"}) {
    EXPECT_EQ(Draw(lines, area, DT_LEFT), 2 * lineHeight_);
    EXPECT_EQ(broken, surface_.Pixels());
    EXPECT_EQ(Draw(lines, area, DT_SINGLELINE), lineHeight_);
    EXPECT_LT(Ink().bottom, 10 + lineHeight_);
  }
}

TEST_F(DrawText, ALongWordIsBrokenAsInAnEditControlOnly) {
  const RECT area{10, 10, 60, 110};
  EXPECT_EQ(Draw(L"Wwwwwwwwwwwwww x", area, DT_WORDBREAK), 2 * lineHeight_);
  const LONG lines = Draw(L"Wwwwwwwwwwwwww", area, DT_WORDBREAK | DT_EDITCONTROL) / lineHeight_;
  const LONG width = Width(L"Wwwwwwwwwwwwww");
  EXPECT_GE(lines, (width + 49) / 50);
  EXPECT_LE(lines, width / 30);
  EXPECT_LE(Ink().right, 60);
}

TEST_F(DrawText, AnEditControlShowsNoPartOfALastLine) {
  const RECT area{10, 10, 100, 10 + 2 * lineHeight_ + lineHeight_ / 2};
  EXPECT_EQ(Draw(L"one\ntwo\nthree", area, DT_EDITCONTROL), 2 * lineHeight_);
  EXPECT_LE(Ink().bottom, 10 + 2 * lineHeight_);
  Draw(L"one\ntwo\nthree", area, DT_LEFT);
  EXPECT_GT(Ink().bottom, 10 + 2 * lineHeight_);
}

TEST_F(DrawText, DotsTellOfLinesThatHaveNoRoom) {
  const RECT area{10, 10, 10 + Width(L"second third"), 10 + 2 * lineHeight_ + 3};
  constexpr UINT kFormat = DT_WORDBREAK | DT_END_ELLIPSIS;
  EXPECT_EQ(Draw(L"first word second third fourth", area, kFormat), 2 * lineHeight_);
  EXPECT_LE(Ink().bottom, 10 + 2 * lineHeight_);
  const Pixels drawn = surface_.Pixels();
  EXPECT_NE(drawn, Drawn(L"first word\nsecond third fourth", area, DT_LEFT)) << "without dots";
  // Also when it is a line of its own that is missing.
  EXPECT_EQ(Drawn(L"first\na\nb", area, kFormat), Drawn(L"first\na...", area, DT_LEFT));
}

TEST_F(DrawText, MeasuringGivesTheRoomThatDrawingTakesAndDrawsNothing) {
  const LONG width = Width(L"Some text");
  EXPECT_EQ(Measured(L"Some text", kArea, DT_SINGLELINE),
            (RECT{20, 10, 20 + width, 10 + lineHeight_}));
  EXPECT_EQ(Measured(L"a\nSome text\nb", kArea, DT_LEFT),
            (RECT{20, 10, 20 + width, 10 + 3 * lineHeight_}));
  EXPECT_EQ(Measured(L"Some text Some text", {0, 0, width + 1, 1}, DT_WORDBREAK),
            (RECT{0, 0, width, 2 * lineHeight_}))
      << "measured no further than the area's bottom";
  EXPECT_EQ(Ink(), RECT{});
}

TEST_F(DrawText, AnAmpersandMarksTheNextLetterUnlessToldNotTo) {
  const RECT plain = Measured(L"&File && more", kArea, DT_SINGLELINE);
  EXPECT_EQ(plain.right - plain.left, Width(L"File & more"));
  const RECT literal = Measured(L"&File", kArea, DT_SINGLELINE | DT_NOPREFIX);
  EXPECT_EQ(literal.right - literal.left, Width(L"&File"));
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(page_, &metrics);
  const int ruleAt = 10 + static_cast<int>(metrics.tmAscent) + 1;
  Draw(L"mmm", kArea, DT_SINGLELINE);
  EXPECT_LE(Ink().bottom, ruleAt) << "something is below the letters";
  RECT area = kArea;
  ::DrawTextW(page_, L"mm&m", -1, &area, DT_SINGLELINE);
  for (int x = 0; x < Width(L"mmm"); ++x)
    EXPECT_EQ(surface_.At(20 + x, ruleAt) == kBlack, x >= Width(L"mm")) << x;
}

TEST_F(DrawText, ManyTextsOneAfterTheOtherLookAsTheyDoAlone) {
  const Pixels first = Drawn(L"12345", kArea, DT_SINGLELINE);
  // More than are kept, so that some have been dropped.
  for (int i = 0; i < 12'000; ++i)
    Width(std::to_wstring(i));
  EXPECT_EQ(first, Drawn(L"12345", kArea, DT_SINGLELINE));
}

}  // namespace
