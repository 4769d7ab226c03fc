// The window system as the grid's tests see it: everything that the grid asks is written down in
// `calls`, in order, one line each, and what it measures is set by the test. A line is the name of
// the function and its arguments:
//   "Notify 7 3,2"                  the code; the packed cell as row,column
//   "NotifyMouseMove 3,2"           row,column
//   "Invalidate 0,0,10,21 erase"    left,top,right,bottom; "erase" only when it is asked for
//   "InvalidateAll erase"
//   "SendSize 400,300"
//   "SetPointer column"             or arrow
//   "ShowBar vertical 1", "SetBarRange vertical 80", "SetBarPosition horizontal 1"
//   "CreateCaret 3,13", "SetCaretPlace 10,20"
//   "DrawBox 0,0,10,21 dcdcdc ffffff", "XorFrame 0,0,10,21 ffffff"    colours as 0x00BBGGRR
//   "PutText 0,0,10,21 right font 2 colour 0 |the text|"             or centred, left, wrapped
//   "DrawCheckBox 0,0,10,21 1"
// and the name alone for what has no arguments. What only reads is not written down.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "grid/grid_system.h"

namespace quillgate {

class RecordingGridSystem : public GridSystem {
 public:
  // --- what the test sets ---
  GridSize clientSize{400, 300};  // without the bars that are shown
  GridSize barSize;               // the width of the vertical, the height of the horizontal bar
  std::map<GridFont, std::int32_t> charWidths;   // pixels of each character; 8 where none is set
  std::map<GridFont, std::int32_t> lineHeights;  // 16 where none is set
  std::int32_t windowFontAscent = 13;
  std::map<int, wchar_t> characters;  // what virtual keys give
  // Called with each line after it has been written down: the parent, or the window, acts.
  std::function<void(const std::string& call)> onCall;

  // --- what the grid asked ---
  std::vector<std::string> calls;
  std::map<GridBar, std::int32_t> barRanges;  // as set, at first 0
  std::map<GridBar, std::int32_t> barPositions;
  std::map<GridBar, bool> barsShown;

  // The calls so far, which are forgotten.
  std::vector<std::string> Take();
  // Those of the calls so far that begin with the text; nothing is forgotten.
  std::vector<std::string> CallsOf(const std::string& beginning) const;

  void Notify(int code, std::uint32_t value) override;
  void NotifyMouseMove(const GridCell& cell) override;
  void NotifyDrawGraphic(const GridRect& inner) override;

  void Invalidate(const GridRect& area, bool erase) override;
  void InvalidateAll(bool erase) override;
  void PaintNow() override;
  GridSize ClientSize() override;
  GridSize SizeWithBars(bool horizontal, bool vertical) override;
  void SendSize(GridSize size) override;
  void PostDrawCursor() override;
  void TakeFocus() override;
  void FocusParent() override;
  void SetPointer(GridPointer pointer) override;
  void Beep() override;
  std::optional<wchar_t> CharOf(int virtualKey) override;

  void ShowBar(GridBar bar, bool shown) override;
  void SetBarRange(GridBar bar, std::int32_t last) override;
  void SetBarPosition(GridBar bar, std::int32_t position) override;

  void CreateCaret(GridSize size) override;
  void DestroyCaret() override;
  void ShowCaret() override;
  void HideCaret() override;
  void SetCaretPlace(GridPoint place) override;

  std::int32_t TextWidth(std::wstring_view text, GridFont font) override;
  std::int32_t LineHeight(GridFont font) override;
  std::int32_t WindowFontAscent() override { return windowFontAscent; }

  void DrawEdge(const GridRect& area) override;
  void DrawBox(const GridRect& area, GridColour line, GridColour fill) override;
  void FillUnused(const GridRect& area) override;
  void PutText(std::wstring_view text, const GridRect& area, GridTextLook look, GridFont font,
               GridColour colour) override;
  void DrawCheckBox(const GridRect& area, bool ticked) override;
  void XorFrame(const GridRect& area, GridColour colour) override;

 private:
  void Record(std::string call);
};

}  // namespace quillgate
