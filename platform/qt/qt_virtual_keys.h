// Maps keys of the toolkit to virtual keys and scan codes.
#pragma once

#include <windows.h>

#include <QKeyEvent>

namespace platform {

struct VirtualKey {
  int code = 0;  // 0: there is no such key
  UINT scanCode = 0;
};

VirtualKey VirtualKeyOf(const QKeyEvent& event);

}  // namespace platform
