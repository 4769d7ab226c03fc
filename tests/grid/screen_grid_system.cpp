#include "screen_grid_system.h"

#include <algorithm>
#include <utility>

namespace quillgate {
namespace {

bool IsInside(const GridRect& area, std::int32_t x, std::int32_t y) {
  return x >= area.left && x < area.right && y >= area.top && y < area.bottom;
}

}  // namespace

ScreenGridSystem::ScreenGridSystem(GridSize size)
    : pixels_(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height)) {
  clientSize = size;
}

template <typename Action>
void ScreenGridSystem::ForEach(const GridRect& area, Action action) {
  for (std::int32_t y = std::max(area.top, 0); y < std::min(area.bottom, clientSize.height); ++y) {
    for (std::int32_t x = std::max(area.left, 0); x < std::min(area.right, clientSize.width); ++x)
      action(pixels_[static_cast<std::size_t>(y * clientSize.width + x)], x, y);
  }
}

void ScreenGridSystem::Lose(const GridRect& area) {
  ForEach(area, [](Pixel& pixel, std::int32_t x, std::int32_t y) {
    pixel.waits = true;
    pixel.isFramed = (x + y) % 2 == 0;
  });
}

void ScreenGridSystem::Paint(Grid& grid) {
  if (!Waits()) return;
  for (Pixel& pixel : pixels_) {
    pixel.isClip = std::exchange(pixel.waits, false);
    pixel.isPainted = false;
  }
  isPainting_ = true;
  grid.Paint();
  isPainting_ = false;
  ++paintings_;
  unpainted_ +=
      static_cast<int>(std::count_if(pixels_.begin(), pixels_.end(), [](const Pixel& pixel) {
        return pixel.isClip && !pixel.isPainted;
      }));
}

void ScreenGridSystem::HandlePosted(Grid& grid) {
  if (posted_ == 0) return;
  --posted_;
  grid.DrawCursor();
}

void ScreenGridSystem::Settle(Grid& grid) {
  while (posted_ > 0 || Waits()) {
    while (posted_ > 0)
      HandlePosted(grid);
    Paint(grid);
  }
}

int ScreenGridSystem::WrongPixels(const GridRect& frame) const {
  int wrong = 0;
  for (std::size_t place = 0; place < pixels_.size(); ++place) {
    const auto width = static_cast<std::size_t>(clientSize.width);
    const auto x = static_cast<std::int32_t>(place % width);
    const auto y = static_cast<std::int32_t>(place / width);
    if (pixels_[place].isFramed != IsInFrame(frame, x, y)) ++wrong;
  }
  return wrong;
}

void ScreenGridSystem::Invalidate(const GridRect& area, bool erase) {
  RecordingGridSystem::Invalidate(area, erase);
  ForEach(area, [](Pixel& pixel, std::int32_t, std::int32_t) { pixel.waits = true; });
}

void ScreenGridSystem::InvalidateAll(bool erase) {
  RecordingGridSystem::InvalidateAll(erase);
  for (Pixel& pixel : pixels_)
    pixel.waits = true;
}

void ScreenGridSystem::PostDrawCursor() {
  RecordingGridSystem::PostDrawCursor();
  ++posted_;
}

void ScreenGridSystem::NotifyDrawGraphic(const GridRect& inner) {
  Cover(inner, false);
  RecordingGridSystem::NotifyDrawGraphic(inner);
}

void ScreenGridSystem::DrawEdge(const GridRect& area) {
  RecordingGridSystem::DrawEdge(area);
  Cover(area, isPainting_);
}

void ScreenGridSystem::DrawBox(const GridRect& area, GridColour line, GridColour fill) {
  RecordingGridSystem::DrawBox(area, line, fill);
  Cover(area, isPainting_);
}

void ScreenGridSystem::FillUnused(const GridRect& area) {
  RecordingGridSystem::FillUnused(area);
  Cover(area, isPainting_);
}

void ScreenGridSystem::XorFrame(const GridRect& area, GridColour colour) {
  RecordingGridSystem::XorFrame(area, colour);
  const GridRect outer{area.left - 1, area.top - 1, area.right + 1, area.bottom + 1};
  ForEach(outer, [&](Pixel& pixel, std::int32_t x, std::int32_t y) {
    if (IsInFrame(area, x, y) && (!isPainting_ || pixel.isClip)) pixel.isFramed = !pixel.isFramed;
  });
}

bool ScreenGridSystem::Waits() const {
  return std::any_of(pixels_.begin(), pixels_.end(),
                     [](const Pixel& pixel) { return pixel.waits; });
}

void ScreenGridSystem::Cover(const GridRect& area, bool clipped) {
  ForEach(area, [&](Pixel& pixel, std::int32_t, std::int32_t) {
    if (clipped && !pixel.isClip) return;
    pixel.isFramed = false;
    pixel.isPainted = true;
  });
}

// A pen of three pixels on the outermost pixels of the rectangle.
bool ScreenGridSystem::IsInFrame(const GridRect& frame, std::int32_t x, std::int32_t y) {
  if (quillgate::IsEmpty(frame)) return false;
  const GridRect outer{frame.left - 1, frame.top - 1, frame.right + 1, frame.bottom + 1};
  const GridRect inner{frame.left + 2, frame.top + 2, frame.right - 2, frame.bottom - 2};
  return IsInside(outer, x, y) && !IsInside(inner, x, y);
}

}  // namespace quillgate
