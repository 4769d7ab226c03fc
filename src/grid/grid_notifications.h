// The notifications that a grid control sends its parent: WM_COMMAND with the code in the high word
// of wParam and the control's identifier in the low word. Unless stated otherwise, lParam holds the
// cursor's row in its low word and its column in its high word.
#pragma once

namespace quillgate {

inline constexpr int GCN_MOUSEMOVE = 2;    // lParam: pointer to the GridCell under the pointer
inline constexpr int GCN_BADCELL = 3;      // lParam: 0
inline constexpr int GCN_DRAWGRAPHIC = 4;  // lParam: pointer to the RECT to draw in
inline constexpr int GCN_SELCHANGE = 5;    // after GCN_ROWCHANGE or GCN_COLCHANGE
inline constexpr int GCN_ROWCHANGE = 6;
inline constexpr int GCN_COLCHANGE = 7;
inline constexpr int GCN_EDITBEGIN = 8;
inline constexpr int GCN_DELETEKEY = 9;
inline constexpr int GCN_EDITEND = 10;
inline constexpr int GCN_FKEY = 11;       // F1; up to 22, F12
inline constexpr int GCN_SETFOCUS = 23;   // lParam: 0
inline constexpr int GCN_KILLFOCUS = 24;  // lParam: 0
inline constexpr int GCN_CLICK = 25;

// The identifier sent with GCN_MOUSEMOVE instead of the control's own.
inline constexpr unsigned kGridMouseMoveId = 500;

}  // namespace quillgate
