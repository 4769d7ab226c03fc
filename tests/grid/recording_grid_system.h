// The window system as the grid's tests see it: everything that the grid asks is written down in
// `calls`, in order, one line each, and what it measures is set by the test. A line is the name of
// the function and its arguments:
//   "Notify 7 3,2"                  the code; the packed cell as row,column
//   "Invalidate 0,0,10,21 erase"    left,top,right,bottom; "erase" only when it is asked for
//   "SetPointer column"             or arrow
//   "SetBarRange vertical 80"
//   "DrawBox 0,0,10,21 dcdcdc ffffff"    colours as 0x00BBGGRR
//   "PutText 0,0,10,21 right font 2 colour 0 |the text|"    or centred, left, wrapped
// and the name alone for what has no arguments. What only reads is not written down.
#pragma once

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "grid/grid_system.h"

namespace quillgate {

inline std::ostream& operator<<(std::ostream& out, GridCell cell) {
  return out << cell.row << "," << cell.col;
}
inline std::ostream& operator<<(std::ostream& out, GridPoint point) {
  return out << point.x << "," << point.y;
}
inline std::ostream& operator<<(std::ostream& out, GridSize size) {
  return out << size.width << "," << size.height;
}
inline std::ostream& operator<<(std::ostream& out, const GridRect& area) {
  return out << area.left << "," << area.top << "," << area.right << "," << area.bottom;
}
inline std::ostream& operator<<(std::ostream& out, GridBar bar) {
  return out << (bar == GridBar::kVertical ? "vertical" : "horizontal");
}

// From here on a key gives the character whose number is left, and is nothing else. Backspace,
// Enter and Escape give theirs too.
inline constexpr int kFirstCharKey = 1'000;

class RecordingGridSystem : public GridSystem {
 public:
  // --- what the test sets ---
  GridSize clientSize{400, 300};  // without the bars that are shown
  GridSize barSize;               // the width of the vertical, the height of the horizontal bar
  std::map<GridFont, GridSize> fonts;  // of each character; 8 x 16 where none is set
  // Called with each line after it has been written down: the parent, or the window, acts.
  std::function<void(const std::string& call)> onCall;

  // --- what the grid asked ---
  std::vector<std::string> calls;
  std::map<GridBar, bool> barsShown;

  void Notify(int code, std::uint32_t value) override {
    Record("Notify ", code, " ", value & 0xFFFFu, ",", value >> 16);
  }
  void NotifyMouseMove(const GridCell& cell) override { Record("NotifyMouseMove ", cell); }
  void NotifyDrawGraphic(const GridRect& inner) override { Record("NotifyDrawGraphic ", inner); }

  void Invalidate(const GridRect& area, bool erase) override {
    Record("Invalidate ", area, erase ? " erase" : "");
  }
  void InvalidateAll(bool erase) override { Record("InvalidateAll", erase ? " erase" : ""); }
  void PaintNow() override { Record("PaintNow"); }
  GridSize ClientSize() override {
    return SizeWithBars(barsShown[GridBar::kHorizontal], barsShown[GridBar::kVertical]);
  }
  GridSize SizeWithBars(bool horizontal, bool vertical) override {
    return {clientSize.width - (vertical ? barSize.width : 0),
            clientSize.height - (horizontal ? barSize.height : 0)};
  }
  void SendSize(GridSize size) override { Record("SendSize ", size); }
  void PostDrawCursor() override { Record("PostDrawCursor"); }
  void TakeFocus() override { Record("TakeFocus"); }
  void FocusParent() override { Record("FocusParent"); }
  void SetPointer(GridPointer pointer) override {
    Record("SetPointer ", pointer == GridPointer::kSizeColumn ? "column" : "arrow");
  }
  void Beep() override { Record("Beep"); }
  std::optional<wchar_t> CharOf(int virtualKey) override {
    if (virtualKey >= ' ' && virtualKey < kFirstCharKey) return std::nullopt;
    return static_cast<wchar_t>(virtualKey % kFirstCharKey);
  }

  void ShowBar(GridBar bar, bool shown) override {
    barsShown[bar] = shown;
    Record("ShowBar ", bar, " ", shown);
  }
  void SetBarRange(GridBar bar, std::int32_t last) override {
    Record("SetBarRange ", bar, " ", last);
  }
  void SetBarPosition(GridBar bar, std::int32_t position) override {
    Record("SetBarPosition ", bar, " ", position);
  }

  void CreateCaret(GridSize size) override { Record("CreateCaret ", size); }
  void DestroyCaret() override { Record("DestroyCaret"); }
  void ShowCaret() override { Record("ShowCaret"); }
  void HideCaret() override { Record("HideCaret"); }
  void SetCaretPosition(GridPoint place) override { Record("SetCaretPosition ", place); }

  std::int32_t TextWidth(std::wstring_view text, GridFont font) override {
    return static_cast<std::int32_t>(text.size()) * SizeOf(font).width;
  }
  std::int32_t LineHeight(GridFont font) override { return SizeOf(font).height; }
  std::int32_t WindowFontAscent() override { return 13; }

  void DrawEdge(const GridRect& area) override { Record("DrawEdge ", area); }
  void DrawBox(const GridRect& area, GridColour line, GridColour fill) override {
    Record("DrawBox ", area, std::hex, " ", line, " ", fill);
  }
  void FillUnused(const GridRect& area) override { Record("FillUnused ", area); }
  void PutText(std::wstring_view text, const GridRect& area, GridTextLook look, GridFont font,
               GridColour colour) override {
    constexpr const char* kLooks[] = {"centred", "left", "right", "wrapped"};
    Record("PutText ", area, " ", kLooks[static_cast<int>(look)], " font ", font, std::hex,
           " colour ", colour, " |", std::string(text.begin(), text.end()), "|");
  }
  void DrawCheckBox(const GridRect& area, bool ticked) override {
    Record("DrawCheckBox ", area, " ", ticked);
  }
  void XorFrame(const GridRect& area, GridColour colour) override {
    Record("XorFrame ", area, std::hex, " ", colour);
  }

 private:
  template <typename... Part>
  void Record(const Part&... parts) {
    std::ostringstream call;
    (call << ... << parts);
    calls.push_back(call.str());
    // A copy: what it does may ask for more.
    if (onCall) onCall(std::string(calls.back()));
  }
  GridSize SizeOf(GridFont font) { return fonts.try_emplace(font, GridSize{8, 16}).first->second; }
};

}  // namespace quillgate
