// The messages of a grid control; docs/grid.md describes each. Its notifications are in
// grid_notifications.h. "Cell" is a pointer to a GridCell in wParam; a cell past the limits makes
// the message return -1 and send GCN_BADCELL.
#pragma once

#include <windows.h>

#include "grid/grid_types.h"

namespace quillgate {

inline constexpr const wchar_t* kGridClassName = L"QGGrid";

inline constexpr UINT GCM_SETPROTECT = WM_USER + 1;         // cell, nonzero: protect
inline constexpr UINT GCM_SETDEFAULTPROTECT = WM_USER + 2;  // nonzero: protect
inline constexpr UINT GCM_SETCELL = WM_USER + 3;            // cell, text
inline constexpr UINT GCM_GETCELL = WM_USER + 4;            // cell, buffer
inline constexpr UINT GCM_CLEAR = WM_USER + 5;
inline constexpr UINT GCM_SETSIZE = WM_USER + 6;       // rows, columns
inline constexpr UINT GCM_DELETECELL = WM_USER + 7;    // cell
inline constexpr UINT GCM_SETCURSORPOS = WM_USER + 8;  // row, column
inline constexpr UINT GCM_SETAUTOROW = WM_USER + 9;    // flag
inline constexpr UINT GCM_GETGRAPHICINDEX = WM_USER + 10;
inline constexpr UINT GCM_SETCOLWIDTH = WM_USER + 11;      // column, width
inline constexpr UINT GCM_SETHEADERHEIGHT = WM_USER + 12;  // height
inline constexpr UINT GCM_GETCELLTYPE = WM_USER + 13;      // cell
inline constexpr UINT GCM_GETPROTECT = WM_USER + 14;       // cell
inline constexpr UINT GCM_DRAWCURSOR = WM_USER + 15;       // slot number; posted by the control
inline constexpr UINT GCM_SETROWHEIGHT = WM_USER + 16;     // height
inline constexpr UINT GCM_SETCURSORCOLOR = WM_USER + 17;   // colour
inline constexpr UINT GCM_SETPROTECTCOLOR = WM_USER + 18;
inline constexpr UINT GCM_SETUNPROTECTCOLOR = WM_USER + 19;
inline constexpr UINT GCM_SETROWNUMBERS = WM_USER + 20;  // flag
inline constexpr UINT GCM_SETCOLLETTERS = WM_USER + 21;
inline constexpr UINT GCM_SETROWHIGHLIGHT = WM_USER + 22;
inline constexpr UINT GCM_GETROWS = WM_USER + 23;
inline constexpr UINT GCM_GETCOLS = WM_USER + 24;
inline constexpr UINT GCM_NOTIFYROW = WM_USER + 25;
inline constexpr UINT GCM_NOTIFYCOL = WM_USER + 26;
inline constexpr UINT GCM_GETCURSORROW = WM_USER + 27;
inline constexpr UINT GCM_GETCURSORCOL = WM_USER + 28;
inline constexpr UINT GCM_REFRESH = WM_USER + 29;
inline constexpr UINT GCM_GETCOLWIDTH = WM_USER + 30;  // column
inline constexpr UINT GCM_GETROWHEIGHT = WM_USER + 31;
inline constexpr UINT GCM_GETHEADERHEIGHT = WM_USER + 32;
inline constexpr UINT GCM_SETTITLEHEIGHT = WM_USER + 33;     // height
inline constexpr UINT GCM_SETHIGHLIGHTCOLOR = WM_USER + 34;  // colour
inline constexpr UINT GCM_SETHIGHLIGHTTEXTCOLOR = WM_USER + 35;
inline constexpr UINT GCM_SETEDITABLE = WM_USER + 36;       // flag
inline constexpr UINT GCM_SETGRIDLINECOLOR = WM_USER + 37;  // colour
inline constexpr UINT GCM_SETEXTENDLASTCOL = WM_USER + 38;  // flag
inline constexpr UINT GCM_SETSPAREFLAG = WM_USER + 39;
inline constexpr UINT GCM_SETELLIPSIS = WM_USER + 40;
inline constexpr UINT GCM_SETAUTOWIDTH = WM_USER + 41;
inline constexpr UINT GCM_SETCOLRESIZE = WM_USER + 42;
inline constexpr UINT GCM_SETTITLEFONT = WM_USER + 43;  // font
inline constexpr UINT GCM_SETHEADINGFONT = WM_USER + 44;

}  // namespace quillgate
