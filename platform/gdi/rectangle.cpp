// Rectangles drawn with pen and brush, and their raster operation.
#include <windows.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <utility>

#include "platform/gdi/device_context.h"
#include "platform/gdi/rect.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// The pen draws between the two rectangles, the brush fills the inner one.
struct Box {
  RECT outer;
  RECT inner;
};

RECT Ordered(int left, int top, int right, int bottom) {
  return {std::min(left, right), std::min(top, bottom), std::max(left, right),
          std::max(top, bottom)};
}

// The pen moves along the outermost pixels of the area: RECT excludes its right and bottom edges.
Box BoxOf(const RECT& area, const Pen& pen) {
  const RECT path{area.left, area.top, area.right - 1, area.bottom - 1};
  // With a null pen the rectangle is one pixel smaller, as documented.
  if (!pen.colour.has_value()) return {path, path};
  const int before = pen.width / 2;
  const int after = pen.width - before;
  return {{path.left - before, path.top - before, path.right + after, path.bottom + after},
          {path.left + after, path.top + after, path.right - before, path.bottom - before}};
}

// The parts do not overlap, since some operations cancel when applied twice.
std::array<RECT, 4> FrameOf(const Box& box) {
  const auto& [outer, inner] = box;
  if (IsEmpty(inner)) return {outer, RECT{}, RECT{}, RECT{}};
  return {RECT{outer.left, outer.top, outer.right, inner.top},
          RECT{outer.left, inner.bottom, outer.right, outer.bottom},
          RECT{outer.left, inner.top, inner.left, inner.bottom},
          RECT{inner.right, inner.top, outer.right, inner.bottom}};
}

std::optional<RasterOperation> OperationOf(int operation) {
  switch (operation) {
    case R2_COPYPEN:
      return RasterOperation::kCopy;
    case R2_XORPEN:
      return RasterOperation::kXor;
    case R2_NOTXORPEN:
      return RasterOperation::kNotXor;
    case R2_NOT:
      return RasterOperation::kNot;
    default:
      return std::nullopt;
  }
}

void Combine(Canvas& canvas, std::span<const RECT> areas, COLORREF colour,
             RasterOperation operation) {
  std::array<RECT, 4> drawn{};
  const auto end = std::ranges::remove_copy_if(areas, drawn.begin(), IsEmpty).out;
  canvas.Combine(std::span(drawn.begin(), end), colour, operation);
}

void DrawBox(Canvas& canvas, const RECT& area, const DeviceContext& context) {
  const Pen& pen = *context.pen.Get();
  const Box box = BoxOf(area, pen);
  const auto fill = context.brush.Get()->Colour();
  const auto operation = OperationOf(context.rasterOperation).value_or(RasterOperation::kCopy);
  if (operation == RasterOperation::kCopy && pen.colour.has_value() && fill.has_value()) {
    // Filling two areas instead of five.
    canvas.Fill(box.outer, *pen.colour);
    if (!IsEmpty(box.inner)) canvas.Fill(box.inner, *fill);
    return;
  }
  if (pen.colour.has_value()) Combine(canvas, FrameOf(box), *pen.colour, operation);
  if (fill.has_value()) Combine(canvas, std::span(&box.inner, 1), *fill, operation);
}

}  // namespace
}  // namespace platform

extern "C" {

int WINAPI SetROP2(HDC context, int operation) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return 0;
  if (!platform::OperationOf(operation).has_value()) {
    platform::LogLine("SetROP2: only copying, inverting and exclusive or are known");
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
  }
  return std::exchange(found->rasterOperation, operation);
} catch (...) {
  return platform::FailedCall(0);
}

BOOL WINAPI Rectangle(HDC context, int left, int top, int right, int bottom) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const RECT area = platform::Ordered(left, top, right, bottom);
  const auto draw = [&](platform::Canvas& canvas) {
    if (!platform::IsEmpty(area)) platform::DrawBox(canvas, area, *found);
  };
  return found->Draw("Rectangle", std::ref(draw));
} catch (...) {
  return platform::FailedCall(FALSE);
}

}  // extern "C"
