// The plain types of GDI+.
#pragma once

#include <windef.h>

namespace Gdiplus {

using REAL = float;
using ARGB = DWORD;

enum GpStatus {
  Ok = 0,
  GenericError = 1,
  InvalidParameter = 2,
  OutOfMemory = 3,
  ObjectBusy = 4,
  InsufficientBuffer = 5,
  NotImplemented = 6,
  Win32Error = 7,
  WrongState = 8,
  Aborted = 9,
  FileNotFound = 10,
  ValueOverflow = 11,
  AccessDenied = 12,
  UnknownImageFormat = 13,
  FontFamilyNotFound = 14,
  FontStyleNotFound = 15,
  NotTrueTypeFont = 16,
  UnsupportedGdiplusVersion = 17,
  GdiplusNotInitialized = 18,
  PropertyNotFound = 19,
  PropertyNotSupported = 20,
  ProfileNotFound = 21
};
using Status = GpStatus;

enum FontStyle {
  FontStyleRegular = 0,
  FontStyleBold = 1,
  FontStyleItalic = 2,
  FontStyleBoldItalic = 3,
  FontStyleUnderline = 4,
  FontStyleStrikeout = 8
};

enum TextRenderingHint {
  TextRenderingHintSystemDefault = 0,
  TextRenderingHintSingleBitPerPixelGridFit = 1,
  TextRenderingHintSingleBitPerPixel = 2,
  TextRenderingHintAntiAliasGridFit = 3,
  TextRenderingHintAntiAlias = 4,
  TextRenderingHintClearTypeGridFit = 5
};

enum Unit {
  UnitWorld = 0,
  UnitDisplay = 1,
  UnitPixel = 2,
  UnitPoint = 3,
  UnitInch = 4,
  UnitDocument = 5,
  UnitMillimeter = 6
};

struct RectF {
  REAL X;
  REAL Y;
  REAL Width;
  REAL Height;

  RectF() : X(0), Y(0), Width(0), Height(0) {}
  RectF(REAL x, REAL y, REAL width, REAL height) : X(x), Y(y), Width(width), Height(height) {}
};

}  // namespace Gdiplus
