// The window system of one grid window, as its control sees it (grid_system.h). Made for one
// message, on the window's thread. When the window has ended meanwhile, its calls do nothing.
#pragma once

#include <windows.h>

#include "grid/grid_drawing.h"
#include "grid/grid_system.h"

namespace quillgate {

// Thrown out of whatever a message does when somebody else has been told of it and has ended the
// grid meanwhile, or made another one: the slot is no longer the window's. The message is over.
struct SlotLost {};

class WindowGridSystem final : public GridSystem {
 public:
  // The identifier is that of the notifications, the slot's number that of GCM_DRAWCURSOR. The
  // generation is that of the slot, which lives as long as the process.
  WindowGridSystem(HWND window, UINT id, std::size_t slotNumber, const std::uint32_t& generation);

  // Drawing goes there from now on; null: to what the window shows, call by call.
  void DrawOn(GridDrawing* drawing) { drawing_ = drawing; }

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
  void SetCaretPosition(GridPoint place) override;

  std::int32_t TextWidth(std::wstring_view text, GridFont font) override;
  std::int32_t LineHeight(GridFont font) override;
  std::int32_t WindowFontAscent() override;

  void DrawEdge(const GridRect& area) override;
  void DrawBox(const GridRect& area, GridColour line, GridColour fill) override;
  void FillUnused(const GridRect& area) override;
  void PutText(std::wstring_view text, const GridRect& area, GridTextLook look, GridFont font,
               GridColour colour) override;
  void DrawCheckBox(const GridRect& area, bool ticked) override;
  void XorFrame(const GridRect& area, GridColour colour) override;

 private:
  void SendCommand(UINT id, int code, LPARAM value);
  // After everything by which others hear of the grid.
  void RequireSlot() const;
  template <class Work>
  auto WithDrawing(const Work& work);

  HWND window_;
  UINT id_;
  std::size_t slotNumber_;
  const std::uint32_t& slotGeneration_;
  const std::uint32_t ownGeneration_;
  GridDrawing* drawing_ = nullptr;
};

// WM_PAINT: while the object lives, the system draws on the context of the painting.
class GridPainting {
 public:
  GridPainting(HWND window, WindowGridSystem& system);
  ~GridPainting();
  GridPainting(const GridPainting&) = delete;
  GridPainting& operator=(const GridPainting&) = delete;

 private:
  HWND window_;
  WindowGridSystem& system_;
  PAINTSTRUCT paint_{};
  std::optional<GridDrawing> drawing_;
};

}  // namespace quillgate
