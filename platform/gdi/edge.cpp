// Edges in the desktop's colours that make an area look raised, sunken, etched or like a bump.
#include <windows.h>

#include <array>
#include <optional>

#include "platform/gdi/desktop_graphics.h"
#include "platform/gdi/device_context.h"
#include "platform/gdi/rect.h"
#include "platform/kernel/api_result.h"
#include "platform/kernel/log.h"

namespace platform {
namespace {

// One line around the area: the system colours of its left and upper sides, and of the others.
struct Ring {
  int lit;
  int shaded;
};
using Edge = std::array<Ring, 2>;

constexpr Ring kRaisedOuter{COLOR_3DLIGHT, COLOR_3DDKSHADOW};
constexpr Ring kSunkenOuter{COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
constexpr Ring kRaisedInner{COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW};
constexpr Ring kSunkenInner{COLOR_3DDKSHADOW, COLOR_3DLIGHT};

std::optional<Edge> EdgeOf(UINT edge) {
  switch (edge) {
    case EDGE_RAISED:
      return Edge{kRaisedOuter, kRaisedInner};
    case EDGE_SUNKEN:
      return Edge{kSunkenOuter, kSunkenInner};
    case EDGE_ETCHED:
      return Edge{kSunkenOuter, kRaisedInner};
    case EDGE_BUMP:
      return Edge{kRaisedOuter, kSunkenInner};
    default:
      return std::nullopt;
  }
}

void Fill(Canvas& canvas, const RECT& area, COLORREF colour) {
  if (!IsEmpty(area)) canvas.Fill(area, colour);
}

// The corners between a lit and a shaded side are shaded.
void DrawRing(Canvas& canvas, const RECT& area, UINT sides, COLORREF lit, COLORREF shaded) {
  const auto& [left, top, right, bottom] = area;
  if ((sides & BF_LEFT) != 0) Fill(canvas, {left, top, left + 1, bottom}, lit);
  if ((sides & BF_TOP) != 0) Fill(canvas, {left, top, right, top + 1}, lit);
  if ((sides & BF_RIGHT) != 0) Fill(canvas, {right - 1, top, right, bottom}, shaded);
  if ((sides & BF_BOTTOM) != 0) Fill(canvas, {left, bottom - 1, right, bottom}, shaded);
}

RECT Inside(const RECT& area, UINT sides) {
  return {area.left + ((sides & BF_LEFT) != 0 ? 1 : 0), area.top + ((sides & BF_TOP) != 0 ? 1 : 0),
          area.right - ((sides & BF_RIGHT) != 0 ? 1 : 0),
          area.bottom - ((sides & BF_BOTTOM) != 0 ? 1 : 0)};
}

bool DrawOn(DeviceContext& context, RECT& area, const Edge& edge, UINT flags) {
  RECT rest = area;
  const auto draw = [&](Canvas& canvas) {
    for (const Ring& ring : edge) {
      DrawRing(canvas, rest, flags, SystemColour(ring.lit), SystemColour(ring.shaded));
      rest = Inside(rest, flags);
    }
    if ((flags & BF_MIDDLE) != 0) Fill(canvas, rest, SystemColour(COLOR_BTNFACE));
  };
  const bool drawn = context.Draw("DrawEdge", std::ref(draw));
  if (drawn && (flags & BF_ADJUST) != 0) area = rest;
  return drawn;
}

}  // namespace
}  // namespace platform

extern "C" BOOL WINAPI DrawEdge(HDC context, LPRECT area, UINT edge, UINT flags) try {
  const auto found = platform::ContextOf(context);
  if (found == nullptr) return FALSE;
  const auto rings = platform::EdgeOf(edge);
  const bool isSupported = rings.has_value() && (flags & ~(BF_RECT | BF_MIDDLE | BF_ADJUST)) == 0;
  if (!isSupported) platform::LogLine("DrawEdge: no diagonal, soft, flat and single edges");
  if (!isSupported || area == nullptr) {
    ::SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  return platform::DrawOn(*found, *area, *rings, flags);
} catch (...) {
  return platform::FailedCall(FALSE);
}
