// Reads a file of compiled resources (.res), as the resource compiler writes it: for each resource
// a RESOURCEHEADER and then its bytes, both aligned to four bytes. Any thread.
#pragma once

#include <vector>

#include "platform/kernel/byte_view.h"
#include "platform/kernel/resources.h"

namespace platform {

// The resources in the file's order. They refer to the file's bytes. A resource whose name or type
// is a string is skipped; reading stops at a damaged header. Both are logged.
std::vector<Resource> ReadResourceFile(ByteView file);

}  // namespace platform
