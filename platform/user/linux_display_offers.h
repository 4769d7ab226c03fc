// Follows the person on the machine's screen from display to display. People's sessions offer
// theirs at a socket in the service's runtime folder; a service that has started without a desktop
// joins the display of the session on the screen. The toolkit works with one connection in a
// process's life, so for the display of any later session it wants a new process.
//
// A thread of its own, until the process ends.
#pragma once

namespace platform {

// Begins to listen, once in a process. Does nothing in a process without a runtime folder
// (RUNTIME_DIRECTORY, systemd.exec(5)): nothing would start it again. Any thread.
void ListenForDisplays();

}  // namespace platform
