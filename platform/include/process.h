// Threads of the C runtime.
#pragma once

#include <cstdint>

extern "C" {

using _beginthreadex_proc_type = unsigned (*)(void* argument);

std::uintptr_t _beginthreadex(void* security, unsigned stackBytes,
                              _beginthreadex_proc_type startAddress, void* argument,
                              unsigned initFlag, unsigned* threadId);

}  // extern "C"
