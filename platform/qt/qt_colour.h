// Converts colours of Win32 to colours of Qt.
#pragma once

#include <windows.h>

#include <QColor>

namespace platform {

inline QColor QtColour(COLORREF colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

}  // namespace platform
