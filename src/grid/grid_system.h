// What the grid control asks of the window system: all its drawing, measuring, scroll bars, caret
// and its parent go through this. Implemented by the window (window_grid_system.h) and by tests.
// Used on the window's thread. Any call may end the control, the notifications above all: the parts
// of the control then find their slot reset, and further calls do nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "grid/grid_types.h"

namespace quillgate {

// How a text stands in its rectangle. All but kWrapped end in dots when they are too long.
enum class GridTextLook {
  kCentred,  // broken at words, from the top
  kLeft,     // one line, in the middle of the height
  kRight,
  kWrapped,  // broken at words, from the top, at the left
};

enum class GridBar { kHorizontal, kVertical };

enum class GridPointer { kArrow, kSizeColumn };

class GridSystem {
 public:
  virtual ~GridSystem() = default;

  // --- the parent: WM_COMMAND with the control's identifier ---
  // The value that goes along is the cursor's place (PackedCell), or 0.
  virtual void Notify(int code, std::uint32_t value) = 0;
  // GCN_MOUSEMOVE, whose identifier is 500 whatever the control's own.
  virtual void NotifyMouseMove(const GridCell& cell) = 0;
  // GCN_DRAWGRAPHIC: the parent draws into the rectangle.
  virtual void NotifyDrawGraphic(const GridRect& inner) = 0;

  // --- the window ---
  virtual void Invalidate(const GridRect& area, bool erase) = 0;
  virtual void InvalidateAll(bool erase) = 0;
  virtual void PaintNow() = 0;
  virtual GridSize ClientSize() = 0;
  // What the client area's size is when just these bars are shown. Two bars that are needed only
  // because of each other would never go otherwise.
  virtual GridSize SizeWithBars(bool horizontal, bool vertical) = 0;
  // Sends the window WM_SIZE with SIZE_MAXIMIZED.
  virtual void SendSize(GridSize size) = 0;
  // Posts GCM_DRAWCURSOR for this control.
  virtual void PostDrawCursor() = 0;
  virtual void TakeFocus() = 0;
  virtual void FocusParent() = 0;
  virtual void SetPointer(GridPointer pointer) = 0;
  virtual void Beep() = 0;
  // The character that a virtual key gives now; nothing when it gives none.
  virtual std::optional<wchar_t> CharOf(int virtualKey) = 0;

  // --- scroll bars, from 1 to `last` ---
  virtual void ShowBar(GridBar bar, bool shown) = 0;
  virtual void SetBarRange(GridBar bar, std::int32_t last) = 0;
  virtual void SetBarPosition(GridBar bar, std::int32_t position) = 0;

  // --- the caret ---
  virtual void CreateCaret(GridSize size) = 0;
  virtual void DestroyCaret() = 0;
  virtual void ShowCaret() = 0;
  virtual void HideCaret() = 0;
  virtual void SetCaretPosition(GridPoint place) = 0;

  // --- measuring; without line feeds ---
  virtual std::int32_t TextWidth(std::wstring_view text, GridFont font) = 0;
  virtual std::int32_t LineHeight(GridFont font) = 0;
  // Of the font that the window has by itself.
  virtual std::int32_t WindowFontAscent() = 0;

  // --- drawing: on the painting under way, else at once on what is shown ---
  // An etched edge on the face colour, two pixels wide.
  virtual void DrawEdge(const GridRect& area) = 0;
  // Framed by a line of one pixel, which is inside.
  virtual void DrawBox(const GridRect& area, GridColour line, GridColour fill) = 0;
  // Filled with the grey of unused area.
  virtual void FillUnused(const GridRect& area) = 0;
  virtual void PutText(std::wstring_view text, const GridRect& area, GridTextLook look,
                       GridFont font, GridColour colour) = 0;
  virtual void DrawCheckBox(const GridRect& area, bool ticked) = 0;
  // A frame three pixels wide, XORed with what is there: once more removes it.
  virtual void XorFrame(const GridRect& area, GridColour colour) = 0;
};

// Row in the low 16 bits, column in the high 16 bits.
constexpr std::uint32_t PackedCell(GridCell cell) {
  return (static_cast<std::uint32_t>(cell.row) & 0xFFFFu) | static_cast<std::uint32_t>(cell.col)
                                                                << 16;
}

}  // namespace quillgate
