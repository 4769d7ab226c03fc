#include "grid/grid_painter.h"

#include "grid_fixture.h"

namespace quillgate {
namespace {

TEST(ColumnLetters, EveryColumnHasTwo) {
  const std::pair<std::int32_t, std::wstring> cases[] = {
      {1, L" A"}, {2, L" B"}, {26, L" Z"}, {27, L"AA"}, {52, L"AZ"}, {53, L"BA"}, {256, L"IV"}};
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

  void Store(GridCell cell, const wchar_t* text, bool isProtected = false) {
    slot_.cellStore.Store(cell, {isProtected, TypeOf(text), text});
  }
  std::string PaintAndTake(std::initializer_list<const char*> beginnings = {""}) {
    Take();
    Grid(slot_, system_).Paint();
    return Take(beginnings);
  }
};

TEST_F(GridPainterTest, ThePictureIsPaintedColumnByColumn) {
  system_.clientSize = {200, 90};
  slot_.title = L"Hours";
  slot_.titleHeight = 20;
  slot_.rows = slot_.cols = 2;
  slot_.colWidth[0] = 30;
  slot_.extendLastCol = false;
  Store({1, 1}, L"text");
  Store({2, 2}, L"12.5", true);
  slot_.protectColor = 0xA0;
  EXPECT_EQ(PaintAndTake(),
            "DrawEdge 0,0,200,20; PutText 2,0,198,20 centred font 3 colour 0 |Hours|; "
            "FillUnused 130,20,200,90; FillUnused 0,83,130,90; "
            // The headings of the rows; the corner is blank.
            "DrawEdge 0,20,30,41; "
            "DrawEdge 0,41,30,62; PutText 2,41,28,62 right font 2 colour 0 |1|; "
            "DrawEdge 0,62,30,83; PutText 2,62,28,83 right font 2 colour 0 |2|; "
            // Cells reach one pixel farther, so that they share their lines.
            "DrawEdge 30,20,80,41; PutText 32,20,78,41 centred font 2 colour 0 | A|; "
            "DrawBox 30,41,81,63 dcdcdc ffffff; "
            "PutText 32,41,78,62 left font 1 colour 0 |text|; "
            "DrawBox 30,62,81,84 dcdcdc ffffff; "
            "DrawEdge 80,20,130,41; PutText 82,20,128,41 centred font 2 colour 0 | B|; "
            "DrawBox 80,41,131,63 dcdcdc ffffff; DrawBox 80,62,131,84 dcdcdc a0; "
            "PutText 82,62,128,83 right font 1 colour 0 |12.5|; PostDrawCursor");
}

TEST_F(GridPainterTest, HeadingsAreLettersAndNumbersOrWhatIsStored) {
  slot_.rows = slot_.cols = 1;
  slot_.headingTextColor = 0x787878;
  Store({0, 0}, L"corner");
  Store({0, 1}, L"00");
  Store({1, 0}, L"Monday");
  const std::string row = "PutText 2,21,48,42 right font 2 colour 0 ";
  const std::string col = "PutText 52,0,398,21 centred font 2 colour 787878 ";
  EXPECT_EQ(PaintAndTake({"PutText"}), row + "|1|; " + col + "| A|");
  slot_.colLetters = slot_.rowNumbers = false;
  EXPECT_EQ(PaintAndTake({"PutText"}), row + "|Monday|; " + col + "|00|");
  slot_.cellStore.Clear();
  EXPECT_EQ(PaintAndTake({"PutText"}), "");
}

TEST_F(GridPainterTest, EachTypeOfTextLooksItsOwn) {
  const auto paint = [&](const wchar_t* text, std::int32_t rowHeight, bool ellipsis) {
    return [=, this] {
      Store({1, 1}, text);
      slot_.rowHeight = rowHeight;
      slot_.ellipsis = ellipsis;
      grid_.Paint();
    };
  };
  const std::string text = "PutText 52,21,98,42 ";
  slot_.rows = 1;
  slot_.cols = 2;
  slot_.colLetters = slot_.rowNumbers = false;
  ExpectAsked({"PutText", "DrawCheckBox", "Notify"},
              {{"nothing", paint(L"", 21, true), ""},
               {"text", paint(L"text", 21, true), text + "left font 1 colour 0 |text|"},
               {"broken text", paint(L"text", 21, false), text + "wrapped font 1 colour 0 |text|"},
               {"number", paint(L"-7", 21, false), text + "right font 1 colour 0 |-7|"},
               {"ticked", paint(L"True", 21, true), "DrawCheckBox 52,23,98,40 1"},
               {"not ticked", paint(L"FALSE", 21, true), "DrawCheckBox 52,23,98,40 0"},
               {"highest box", paint(L"true", 28, true), "DrawCheckBox 52,23,98,47 1"},
               {"still higher row", paint(L"true", 29, true), "DrawCheckBox 52,27,98,43 1"},
               {"graphic", paint(L"~9", 21, true), "NotifyDrawGraphic 52,23,98,40"}});
}

TEST_F(GridPainterTest, AGraphicsNumberIsThereWhenItsParentIsAsked) {
  const std::pair<const wchar_t*, std::int32_t> cases[] = {
      {L"~7", 7},     {L"~", 0},    {L"~x", 0},
      {L"~ 12b", 12}, {L"~-3", -3}, {L"~99999999999999999999", 2'147'483'647},
  };
  std::int32_t asked = 0;
  When("NotifyDrawGraphic", [&](Grid&) { asked = slot_.graphicIndex; });
  for (const auto& [text, number] : cases) {
    Store({1, 1}, text);
    asked = 1234;
    grid_.Paint();
    EXPECT_EQ(asked, number) << text;
  }
}

TEST_F(GridPainterTest, TheCursorsRowIsHighlightedAsTheFocusSays) {
  const std::tuple<bool, bool, std::string, std::string> cases[] = {
      {false, true, "ee", "0"}, {true, true, "800000", "ffffff"}, {true, false, "c8c8c8", "0"}};
  slot_.rows = 2;
  slot_.cols = 1;
  slot_.protectColor = 0xEE;
  slot_.unprotectColor = 0xDD;
  Store({1, 1}, L"a", true);
  Store({2, 1}, L"b");
  for (const auto& [rowHighlight, hasFocus, background, text] : cases) {
    slot_.rowHighlight = rowHighlight;
    slot_.hasFocus = hasFocus;
    EXPECT_EQ(PaintAndTake({"DrawBox", "PutText 52,21", "PutText 52,42", "PutText 2,21"}),
              "PutText 2,21,48,42 right font 2 colour 0 |1|; DrawBox 50,21,401,43 dcdcdc " +
                  background + "; PutText 52,21,398,42 left font 1 colour " + text +
                  " |a|; DrawBox 50,42,401,64 dcdcdc dd; "
                  "PutText 52,42,398,63 left font 1 colour 0 |b|");
  }
}

TEST_F(GridPainterTest, OnlyWhatIsVisibleIsPainted) {
  slot_.rows = 32'000;
  slot_.cols = 256;
  PutHome({31'000, 100});
  slot_.colWidth[101] = 0;
  const auto count = [&](const char* call) {
    return 1 + std::ranges::count(PaintAndTake({call}), ';');
  };
  // Fourteen rows, the last of them cut, of seven columns, and their headings.
  EXPECT_EQ(count("DrawBox"), 14 * 7);
  EXPECT_EQ(count("DrawEdge"), 1 + 14 + 7);
  EXPECT_EQ(slot_.firstVisibleRow, 31'000);
  EXPECT_EQ(slot_.lastVisibleRow, 31'013);
  EXPECT_EQ(slot_.firstVisibleCol, 100);
  EXPECT_EQ(slot_.lastVisibleCol, 107);
}

TEST_F(GridPainterTest, WhatHasNoCellsIsFilled) {
  const auto paint = [&](std::int32_t rows, std::int32_t cols, bool extends) {
    return [=, this] {
      slot_.rows = rows;
      slot_.cols = cols;
      slot_.extendLastCol = extends;
      grid_.Paint();
    };
  };
  ExpectAsked({"FillUnused"}, {{"all covered", paint(100, 10, true), ""},
                               {"below", paint(3, 10, true), "FillUnused 0,84,400,300"},
                               {"beside", paint(100, 2, false), "FillUnused 150,0,400,300"},
                               {"no rows", paint(0, 10, true), "FillUnused 0,21,400,300"}});
  slot_.colWidth.fill(0);
  ExpectAsked({"FillUnused", "Draw"},
              {{"no widths", paint(100, 10, true), "FillUnused 0,0,400,300"}});
}

TEST_F(GridPainterTest, TheEditBoxStandsOnTheCells) {
  slot_.rows = slot_.cols = 1;
  slot_.editing = true;
  slot_.editText = L"12";
  EXPECT_EQ(PaintAndTake({"DrawBox", "PutText 53", "PostDrawCursor"}),
            "DrawBox 50,21,401,43 dcdcdc ffffff; DrawBox 52,23,398,40 0 ffffff; "
            "PutText 53,23,393,40 right font 1 colour 0 |12|; PostDrawCursor");
}

TEST_F(GridPainterTest, AParentMayDoAnythingWhileItDrawsAGraphic) {
  const GridCell first{1, 1};
  const std::pair<const char*, std::function<void(Grid&)>> acts[] = {
      {"stores cells", [&](Grid& grid) { grid.SetCell(first, L"~3"); }},
      {"clears", [](Grid& grid) { grid.Clear(); }},
      {"hides columns", [](Grid& grid) { grid.SetColWidth(1, 0); }},
      {"scrolls", [](Grid& grid) { grid.SetCursorPos(100, 10); }},
      {"ends the control", [&](Grid&) { ResetAfterDestruction(slot_); }},
  };
  for (const auto& [what, act] : acts) {
    slot_ = {};
    Store(first, L"~1");
    Store({2, 1}, L"~2");
    When("NotifyDrawGraphic 52,23", act);
    EXPECT_TRUE(PaintAndTake({"NotifyDraw", "PostDrawCursor"}).ends_with("PostDrawCursor")) << what;
  }
}

}  // namespace
}  // namespace quillgate
