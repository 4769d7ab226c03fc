// The priority of processes for the kernel's out-of-memory killer (proc(5), oom_score_adj). Any
// thread.
#pragma once

#include <sys/types.h>

namespace platform {

// Exempts this process, or lowers its score as far as its rights permit. Child processes inherit
// the score.
void SpareFromOomKiller();

// Resets the score of a child process to the default.
void ExposeToOomKiller(pid_t process);

}  // namespace platform
