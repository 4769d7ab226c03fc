#include "grid/grid_painter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "grid_fixture.h"

namespace quillgate {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(ColumnLetters, EveryColumnHasTwo) {
  const std::pair<std::int32_t, std::wstring> cases[] = {
      {1, L" A"}, {2, L" B"}, {26, L" Z"}, {27, L"AA"}, {52, L"AZ"}, {53, L"BA"}, {256, L"IV"},
  };
  for (const auto& [col, letters] : cases)
    EXPECT_EQ(ColumnLetters(col), letters) << col;
}

// Fonts 1 for cells, 2 for headings, 3 for the title.
class GridPainterTest : public GridFixture {
 protected:
  GridPainterTest() {
    slot_.cellFont = 1;
    slot_.headingFont = 2;
    slot_.titleFont = 3;
    slot_.rowHighlight = false;
  }

  void SetText(GridCell cell, const wchar_t* text, bool isProtected = false) {
    slot_.cellStore.Store(cell, {isProtected, TypeOf(text), text});
  }

  std::vector<std::string> PaintAndTake(const std::vector<std::string>& beginnings) {
    system_.Take();
    Grid(slot_, system_).Paint();
    return Take(beginnings);
  }
};

TEST_F(GridPainterTest, ThePictureIsPaintedColumnByColumn) {
  system_.clientSize = {200, 90};
  slot_.title = L"Hours";
  slot_.titleHeight = 20;
  slot_.rows = 2;
  slot_.cols = 2;
  slot_.colWidth[0] = 30;
  slot_.extendLastCol = false;
  SetText({1, 1}, L"text");
  SetText({2, 2}, L"12.5", true);
  slot_.protectColor = 0xA0;
  EXPECT_THAT(
      PaintAndTake({""}),
      ElementsAre("DrawEdge 0,0,200,20", "PutText 2,0,198,20 centred font 3 colour 0 |Hours|",
                  "FillUnused 130,20,200,90", "FillUnused 0,83,130,90",
                  // The headings of the rows; the corner is blank.
                  "DrawEdge 0,20,30,41", "DrawEdge 0,41,30,62",
                  "PutText 2,41,28,62 right font 2 colour 0 |1|", "DrawEdge 0,62,30,83",
                  "PutText 2,62,28,83 right font 2 colour 0 |2|",
                  // Cells reach one pixel farther, so that they share their lines.
                  "DrawEdge 30,20,80,41", "PutText 32,20,78,41 centred font 2 colour 0 | A|",
                  "DrawBox 30,41,81,63 dcdcdc ffffff",
                  "PutText 32,41,78,62 left font 1 colour 0 |text|",
                  "DrawBox 30,62,81,84 dcdcdc ffffff", "DrawEdge 80,20,130,41",
                  "PutText 82,20,128,41 centred font 2 colour 0 | B|",
                  "DrawBox 80,41,131,63 dcdcdc ffffff", "DrawBox 80,62,131,84 dcdcdc a0",
                  "PutText 82,62,128,83 right font 1 colour 0 |12.5|", "PostDrawCursor"));
}

TEST_F(GridPainterTest, HeadingsAreLettersAndNumbersOrWhatIsStored) {
  slot_.rows = slot_.cols = 1;
  slot_.headingTextColor = 0x787878;
  SetText({0, 0}, L"corner");
  SetText({0, 1}, L"00");
  SetText({1, 0}, L"Monday");
  const std::string letters = "PutText 52,0,398,21 centred font 2 colour 787878 | A|";
  const std::string stored = "PutText 52,0,398,21 centred font 2 colour 787878 |00|";
  const std::string number = "PutText 2,21,48,42 right font 2 colour 0 |1|";
  const std::string day = "PutText 2,21,48,42 right font 2 colour 0 |Monday|";
  EXPECT_THAT(PaintAndTake({"PutText"}), ElementsAre(number, letters));
  slot_.colLetters = false;
  EXPECT_THAT(PaintAndTake({"PutText"}), ElementsAre(number, stored));
  slot_.rowNumbers = false;
  EXPECT_THAT(PaintAndTake({"PutText"}), ElementsAre(day, stored));
  slot_.cellStore.Clear();
  EXPECT_THAT(PaintAndTake({"PutText"}), IsEmpty());
}

TEST_F(GridPainterTest, EachTypeOfTextLooksItsOwn) {
  struct Case {
    const wchar_t* text;
    std::int32_t rowHeight;
    bool ellipsis;
    std::vector<std::string> calls;
  };
  const Case cases[] = {
      {L"", 21, true, {}},
      {L"text", 21, true, {"PutText 52,21,98,42 left font 1 colour 0 |text|"}},
      {L"text", 21, false, {"PutText 52,21,98,42 wrapped font 1 colour 0 |text|"}},
      {L"-7", 21, false, {"PutText 52,21,98,42 right font 1 colour 0 |-7|"}},
      {L"True", 21, true, {"DrawCheckBox 52,23,98,40 1"}},
      {L"FALSE", 21, true, {"DrawCheckBox 52,23,98,40 0"}},
      {L"true", 28, true, {"DrawCheckBox 52,23,98,47 1"}},
      {L"true", 29, true, {"DrawCheckBox 52,27,98,43 1"}},
      {L"~9", 21, true, {"NotifyDrawGraphic 52,23,98,40"}},
  };
  slot_.rows = 1;
  slot_.cols = 2;
  slot_.colLetters = slot_.rowNumbers = false;
  for (const Case& each : cases) {
    SetText({1, 1}, each.text);
    slot_.rowHeight = each.rowHeight;
    slot_.ellipsis = each.ellipsis;
    EXPECT_THAT(PaintAndTake({"PutText", "DrawCheckBox", "NotifyDrawGraphic"}),
                ElementsAreArray(each.calls))
        << each.text;
  }
}

TEST_F(GridPainterTest, AGraphicsNumberIsThereWhenItsParentIsAsked) {
  const std::pair<const wchar_t*, std::int32_t> cases[] = {
      {L"~7", 7},     {L"~", 0},    {L"~x", 0},
      {L"~ 12b", 12}, {L"~-3", -3}, {L"~99999999999999999999", 2'147'483'647},
  };
  for (const auto& [text, number] : cases) {
    SetText({1, 1}, text);
    slot_.graphicIndex = 1234;
    std::int32_t asked = 1234;
    system_.onCall = [&](const std::string& call) {
      if (call.starts_with("NotifyDrawGraphic")) asked = slot_.graphicIndex;
    };
    Grid(slot_, system_).Paint();
    EXPECT_EQ(asked, number) << text;
  }
}

TEST_F(GridPainterTest, TheCursorsRowIsHighlightedAsTheFocusSays) {
  struct Case {
    bool rowHighlight;
    bool hasFocus;
    const char* background;
    const char* text;
  };
  const Case cases[] = {
      {false, true, "ee", "0"}, {true, true, "800000", "ffffff"}, {true, false, "c8c8c8", "0"}};
  slot_.rows = 2;
  slot_.cols = 1;
  slot_.protectColor = 0xEE;
  slot_.unprotectColor = 0xDD;
  SetText({1, 1}, L"a", true);
  SetText({2, 1}, L"b");
  for (const Case& each : cases) {
    slot_.rowHighlight = each.rowHighlight;
    slot_.hasFocus = each.hasFocus;
    EXPECT_THAT(
        PaintAndTake({"DrawBox", "PutText 52,21", "PutText 52,42", "PutText 2,21"}),
        ElementsAre("PutText 2,21,48,42 right font 2 colour 0 |1|",
                    std::string("DrawBox 50,21,401,43 dcdcdc ") + each.background,
                    std::string("PutText 52,21,398,42 left font 1 colour ") + each.text + " |a|",
                    "DrawBox 50,42,401,64 dcdcdc dd",
                    "PutText 52,42,398,63 left font 1 colour 0 |b|"));
  }
}

TEST_F(GridPainterTest, OnlyWhatIsVisibleIsPainted) {
  slot_.rows = 32'000;
  slot_.cols = 256;
  slot_.homeRow = 31'000;
  slot_.homeCol = 100;
  slot_.colWidth[101] = 0;
  PaintAndTake({});
  EXPECT_EQ(slot_.firstVisibleRow, 31'000);
  EXPECT_EQ(slot_.lastVisibleRow, 31'013);
  EXPECT_EQ(slot_.firstVisibleCol, 100);
  EXPECT_EQ(slot_.lastVisibleCol, 107);
  // Fourteen rows, the last of them cut, of seven columns, and their headings.
  EXPECT_EQ(PaintAndTake({"DrawBox"}).size(), 14U * 7U);
  EXPECT_EQ(PaintAndTake({"DrawEdge"}).size(), 1U + 14U + 7U);
}

TEST_F(GridPainterTest, WhatHasNoCellsIsFilled) {
  struct Case {
    const char* what;
    std::int32_t rows;
    std::int32_t cols;
    bool extends;
    std::vector<std::string> calls;
  };
  const Case cases[] = {
      {"all covered", 100, 10, true, {}},
      {"below", 3, 10, true, {"FillUnused 0,84,400,300"}},
      {"beside", 100, 2, false, {"FillUnused 150,0,400,300"}},
      {"no rows", 0, 10, true, {"FillUnused 0,21,400,300"}},
  };
  for (const Case& each : cases) {
    slot_.rows = each.rows;
    slot_.cols = each.cols;
    slot_.extendLastCol = each.extends;
    EXPECT_THAT(PaintAndTake({"FillUnused"}), ElementsAreArray(each.calls)) << each.what;
  }
  slot_.colWidth.fill(0);
  slot_.extendLastCol = true;
  EXPECT_THAT(PaintAndTake({"FillUnused", "Draw"}), ElementsAre("FillUnused 0,0,400,300"))
      << "no column has a width";
}

TEST_F(GridPainterTest, TheEditBoxStandsOnTheCells) {
  slot_.rows = slot_.cols = 1;
  slot_.editing = true;
  slot_.editText = L"12";
  const std::vector<std::string> calls = PaintAndTake({"DrawBox", "PutText", "PostDrawCursor"});
  ASSERT_GE(calls.size(), 3U);
  EXPECT_THAT(std::vector<std::string>(calls.end() - 3, calls.end()),
              ElementsAre("DrawBox 52,23,398,40 0 ffffff",
                          "PutText 53,23,393,40 right font 1 colour 0 |12|", "PostDrawCursor"));
}

TEST_F(GridPainterTest, AParentMayDoAnythingWhileItDrawsAGraphic) {
  const GridCell first{1, 1};
  const std::pair<const char*, std::function<void()>> acts[] = {
      {"stores cells", [&] { Grid(slot_, system_).SetCell(first, L"~3"); }},
      {"clears", [&] { Grid(slot_, system_).Clear(); }},
      {"hides columns", [&] { Grid(slot_, system_).SetColWidth(1, 0); }},
      {"scrolls", [&] { Grid(slot_, system_).SetCursorPos(100, 10); }},
      {"ends the control", [&] { ResetAfterDestruction(slot_); }},
  };
  for (const auto& [what, act] : acts) {
    slot_ = {};
    SetText({1, 1}, L"~1");
    SetText({2, 1}, L"~2");
    int drawn = 0;
    system_.onCall = [&, &acting = act](const std::string& call) {
      if (call.starts_with("NotifyDrawGraphic") && ++drawn == 1) acting();
    };
    EXPECT_THAT(PaintAndTake({"PostDrawCursor"}), ElementsAre("PostDrawCursor")) << what;
    EXPECT_GE(drawn, 1) << what;
  }
}

}  // namespace
}  // namespace quillgate
