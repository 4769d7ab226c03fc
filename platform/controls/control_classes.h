// The system classes of dialogs and common controls. Any thread.
#pragma once

#include <windows.h>

#include <span>

#include "platform/user/control.h"

namespace platform {

std::span<const SystemClass> ControlClasses();

}  // namespace platform
