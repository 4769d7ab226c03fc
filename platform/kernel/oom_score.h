// Whom the kernel's out-of-memory killer takes first when the machine has none left. Any thread.
#pragma once

#include <sys/types.h>

namespace platform {

// Has this process passed over, or as far down as it may be without the right to that. Processes
// that it starts inherit it.
void SpareFromOomKiller();

// Makes a process that this one has started as likely a victim as any other.
void ExposeToOomKiller(pid_t process);

}  // namespace platform
