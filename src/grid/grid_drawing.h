// Draws and measures a grid's parts on a device context. Selected objects and colours are kept from
// call to call, since neighbouring cells look alike; the destructor restores the context.
// Constructed for one WM_PAINT, or for one call outside of it.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

#include "grid/grid_system.h"
#include "handles/gdi_handles.h"

namespace quillgate {

class GridDrawing {
 public:
  // The context is borrowed and must outlive the object.
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
  // The ascent of the font that is selected in the context.
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
