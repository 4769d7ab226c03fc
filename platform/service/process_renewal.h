// Replaces a service's process by a new one when it needs what only a new process can have. Ending
// it costs what the service has not stored yet, so it ends right after a sign of life, by which the
// service says that a round of its work is complete, and no more than once a minute. Any thread.
#pragma once

#include <chrono>

namespace platform {

// What systemd starts again: the status is one that a service's unit knows as such a wish. What the
// process has set in the kernel stays, as after a kill.
void SetRenewalWanted(bool isWanted);

// Tells that the service has given a sign of life. Does not return if a new process is wanted and
// the first sign was at least a minute before.
void NoteSignOfLife(std::chrono::steady_clock::time_point now);

}  // namespace platform
