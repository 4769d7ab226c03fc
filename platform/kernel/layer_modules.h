// The modules that live in the layer itself, for programs that load them by name. Defined by the
// wiring. Any thread.
#pragma once

#include "platform/kernel/modules.h"

namespace platform {

// Exports by lower-case name. Each is there whether or not the machine has a desktop: what needs
// one fails by itself.
std::map<std::wstring, ExportTable> LayerModules();

}  // namespace platform
