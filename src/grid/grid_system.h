// The grid control's interface to the window system: drawing, measuring, scroll bars, caret and
// parent. Implemented for a window (window_grid_system.h) and by tests. Used on the window's
// thread. Any call may destroy the control, notifications above all: the parts of the control then
// find their slot reset, and further calls do nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "grid/grid_types.h"

namespace quillgate {

// How a text is aligned in its rectangle. All but kWrapped end in an ellipsis when too long.
enum class GridTextLook {
  kCentred,  // word-wrapped, from the top
  kLeft,     // one line, vertically centred
  kRight,
  kWrapped,  // word-wrapped, from the top, left-aligned
};

enum class GridBar { kHorizontal, kVertical };

enum class GridPointer { kArrow, kSizeColumn };

class GridSystem {
 public:
  virtual ~GridSystem() = default;

  // --- the parent: WM_COMMAND with the control's identifier ---
  // `value` is the cursor's position (PackedCell), or 0.
  virtual void Notify(int code, std::uint32_t value) = 0;
  // GCN_MOUSEMOVE, with the identifier 500 instead of the control's own.
  virtual void NotifyMouseMove(const GridCell& cell) = 0;
  // GCN_DRAWGRAPHIC: the parent draws into the rectangle.
  virtual void NotifyDrawGraphic(const GridRect& inner) = 0;

  // --- the window ---
  virtual void Invalidate(const GridRect& area, bool erase) = 0;
  virtual void InvalidateAll(bool erase) = 0;
  virtual void PaintNow() = 0;
  virtual GridSize ClientSize() = 0;
  // The client area's size if exactly these bars were shown. With the actual size, two bars that
  // are needed only because of each other would never be hidden.
  virtual GridSize SizeWithBars(bool horizontal, bool vertical) = 0;
  // Sends the window WM_SIZE with SIZE_MAXIMIZED.
  virtual void SendSize(GridSize size) = 0;
  // Posts GCM_DRAWCURSOR for this control.
  virtual void PostDrawCursor() = 0;
  virtual void TakeFocus() = 0;
  virtual void FocusParent() = 0;
  virtual void SetPointer(GridPointer pointer) = 0;
  virtual void Beep() = 0;
  // The character that a virtual key produces in the current keyboard state; nullopt when none.
  virtual std::optional<wchar_t> CharOf(int virtualKey) = 0;

  // --- scroll bars; ranges are 1 to `last` ---
  virtual void ShowBar(GridBar bar, bool shown) = 0;
  virtual void SetBarRange(GridBar bar, std::int32_t last) = 0;
  virtual void SetBarPosition(GridBar bar, std::int32_t position) = 0;

  // --- the caret ---
  virtual void CreateCaret(GridSize size) = 0;
  virtual void DestroyCaret() = 0;
  virtual void ShowCaret() = 0;
  virtual void HideCaret() = 0;
  virtual void SetCaretPosition(GridPoint position) = 0;

  // --- measuring; texts have no line feeds ---
  virtual std::int32_t TextWidth(std::wstring_view text, GridFont font) = 0;
  virtual std::int32_t LineHeight(GridFont font) = 0;
  // The ascent of the default font of the window's device context.
  virtual std::int32_t WindowFontAscent() = 0;

  // --- drawing: in the current WM_PAINT, otherwise directly on the window ---
  // An etched edge on the face colour, two pixels wide.
  virtual void DrawEdge(const GridRect& area) = 0;
  // A filled rectangle with a border of one pixel inside of its bounds.
  virtual void DrawBox(const GridRect& area, GridColour line, GridColour fill) = 0;
  // Fills the rectangle with the grey of unused area.
  virtual void FillUnused(const GridRect& area) = 0;
  virtual void PutText(std::wstring_view text, const GridRect& area, GridTextLook look,
                       GridFont font, GridColour colour) = 0;
  virtual void DrawCheckBox(const GridRect& area, bool ticked) = 0;
  // A frame three pixels wide, drawn with XOR: drawing it again removes it.
  virtual void XorFrame(const GridRect& area, GridColour colour) = 0;
};

// Row in the low 16 bits, column in the high 16 bits.
constexpr std::uint32_t PackedCell(GridCell cell) {
  return (static_cast<std::uint32_t>(cell.row) & 0xFFFFu) | static_cast<std::uint32_t>(cell.col)
                                                                << 16;
}

}  // namespace quillgate
