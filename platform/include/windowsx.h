// What takes message parameters apart.
#pragma once

#include <windef.h>

// Places of the mouse, which may be negative.
#define GET_X_LPARAM(parameter) (static_cast<int>(static_cast<SHORT>(LOWORD(parameter))))
#define GET_Y_LPARAM(parameter) (static_cast<int>(static_cast<SHORT>(HIWORD(parameter))))
