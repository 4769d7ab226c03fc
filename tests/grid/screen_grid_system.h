// A window system with a screen: it keeps, for each pixel of the client area, whether a frame is
// XORed onto it, what waits to be painted, and what a painting has left out. Drawing within a
// painting is clipped to what waits; what a parent draws into a graphic cell is not.
#pragma once

#include <vector>

#include "grid/grid.h"
#include "recording_grid_system.h"

namespace quillgate {

class ScreenGridSystem : public RecordingGridSystem {
 public:
  explicit ScreenGridSystem(GridSize size);

  // As when another window has been over it: what was there is lost.
  void Lose(const GridRect& area);
  // WM_PAINT, if anything waits.
  void Paint(Grid& grid);
  // One posted GCM_DRAWCURSOR, if there is one.
  void HandlePosted(Grid& grid);
  // Until nothing is posted and nothing waits.
  void Settle(Grid& grid);

  // Pixels that do not show what they should when the only frame is this one; an empty one: none.
  int WrongPixels(const GridRect& frame) const;
  // Pixels that waited, and that a painting has not drawn on. Of all paintings so far.
  int UnpaintedPixels() const { return unpainted_; }
  int Paintings() const { return paintings_; }

  void Invalidate(const GridRect& area, bool erase) override;
  void InvalidateAll(bool erase) override;
  void PostDrawCursor() override;
  void NotifyDrawGraphic(const GridRect& inner) override;
  void DrawEdge(const GridRect& area) override;
  void DrawBox(const GridRect& area, GridColour line, GridColour fill) override;
  void FillUnused(const GridRect& area) override;
  void XorFrame(const GridRect& area, GridColour colour) override;

 private:
  struct Pixel {
    bool isFramed = false;
    bool waits = true;
    bool isClip = false;  // of the painting under way
    bool isPainted = false;
  };
  template <typename Action>
  void ForEach(const GridRect& area, Action action);
  bool Waits() const;
  void Cover(const GridRect& area, bool clipped);
  static bool IsInFrame(const GridRect& frame, std::int32_t x, std::int32_t y);

  std::vector<Pixel> pixels_;
  bool isPainting_ = false;
  int posted_ = 0;
  int unpainted_ = 0;
  int paintings_ = 0;
};

}  // namespace quillgate
