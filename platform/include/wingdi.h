// Fonts, device contexts and drawing.
#pragma once

#include <windef.h>

#define NONANTIALIASED_QUALITY 3

#define LF_FACESIZE 32
struct LOGFONTW {
  LONG lfHeight;  // negative: of the characters, positive: of the line
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  WCHAR lfFaceName[LF_FACESIZE];
};
