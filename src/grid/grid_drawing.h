// Draws and measures a grid's parts on a device context. What it has selected and set last is kept
// from call to call, since neighbouring cells look alike; its end puts back what the context had.
// Made for one painting, or for one call outside of it.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "grid/grid_system.h"
#include "handles/gdi_handles.h"

namespace quillgate {

class GridDrawing {
 public:
  // The context is borrowed and outlives the object.
  explicit GridDrawing(HDC context);
  ~GridDrawing();
  GridDrawing(const GridDrawing&) = delete;
  GridDrawing& operator=(const GridDrawing&) = delete;

  void Edge(const GridRect& area);
  void Box(const GridRect& area, GridColour line, GridColour fill);
  void UnusedArea(const GridRect& area);
  void Text(std::wstring_view text, const GridRect& area, GridTextLook look, GridFont font,
            GridColour colour);
  void CheckBox(const GridRect& area, bool ticked);
  void XorFrame(const GridRect& area, GridColour colour);

  std::int32_t TextWidth(std::wstring_view text, GridFont font);
  std::int32_t LineHeight(GridFont font);
  // Of the font that the context came with.
  std::int32_t Ascent();

 private:
  void UsePen(int width, GridColour colour);
  void UseBrush(GridColour colour);
  void UseFont(GridFont font);

  HDC context_;
  HGDIOBJ penBefore_ = nullptr;
  HGDIOBJ brushBefore_ = nullptr;
  HGDIOBJ fontBefore_ = nullptr;
  int modeBefore_;
  COLORREF colourBefore_;
  PenHandle pen_;
  int penWidth_ = 0;
  GridColour penColour_ = 0;
  BrushHandle brush_;
  std::optional<GridColour> brushColour_;
  GridFont font_ = 0;
  GridColour textColour_ = 0;
};

RECT NativeRect(const GridRect& area);

}  // namespace quillgate
