// The window system of one grid window (grid_system.h). Constructed per message, on the window's
// thread. Calls do nothing when the window has been destroyed meanwhile.
#pragma once

#include <windows.h>

#include "grid/grid_drawing.h"
#include "grid/grid_system.h"

namespace quillgate {

// Thrown when a notification or another call has led to the grid's destruction, also when a new
// grid has taken the slot since. The slot is not the window's, so the message is abandoned.
struct SlotLost {};

class WindowGridSystem final : public GridSystem {
 public:
  // `id` is sent in notifications, `slotNumber` in GCM_DRAWCURSOR. `generation` is that of the slot
  // and lives as long as the process.
  WindowGridSystem(HWND window, UINT id, std::size_t slotNumber, const std::uint32_t& generation);

  // Sets the target of all drawing; null: each call draws directly on the window.
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
  void SetCaretPosition(GridPoint position) override;

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
  // Throws SlotLost when the slot was released or taken since construction. Called after every call
  // that may run code outside of the grid.
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

// WM_PAINT: during its lifetime, the system draws on the paint device context.
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
