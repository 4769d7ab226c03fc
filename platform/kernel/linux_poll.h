// Waiting for input of a descriptor. Any thread.
#pragma once

#include <chrono>

namespace platform {

// True when there is input, or its end; false when there is none by then, or the descriptor cannot
// be waited for.
bool AwaitInput(int descriptor, std::chrono::steady_clock::time_point deadline);

}  // namespace platform
