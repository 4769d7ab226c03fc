// Reads a file of compiled resources (.res), as the resource compiler writes it: for each resource
// RESOURCEHEADER and then its bytes, both at multiples of four. Any thread.
#pragma once

#include <vector>

#include "platform/kernel/byte_view.h"
#include "platform/kernel/resources.h"

namespace platform {

// The resources in the file's order; they refer to its bytes. Those that have a name or type in
// words are passed over, and what follows a damaged header is, each with a log line.
std::vector<Resource> ReadResourceFile(ByteView file);

}  // namespace platform
