// The C++ source that gives compiled resources to the layer before main runs.
#pragma once

#include <ostream>
#include <span>

#include "platform/tools/rescomp/resource_script.h"

namespace rescomp {

void WriteSource(std::ostream& out, std::span<const CompiledResource> resources);

}  // namespace rescomp
