// Memory that runs out for a moment: the thread gets as many more allocations by operator new as
// are granted here, std::bad_alloc for the next one, and then memory again.
#pragma once

#include <optional>

namespace quillgate {

inline thread_local std::optional<int> grantedAllocations;

}  // namespace quillgate
