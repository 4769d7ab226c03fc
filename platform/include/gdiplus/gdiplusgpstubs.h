// The opaque objects of GDI+'s flat functions; their pointers are handles.
#pragma once

namespace Gdiplus {

class GpBrush {};
class GpSolidFill : public GpBrush {};
class GpFont {};
class GpFontCollection {};
class GpFontFamily {};
class GpGraphics {};
class GpStringFormat {};

}  // namespace Gdiplus
