// The display server may go while the program runs: its user logs off, or it crashes. Qt would end
// the process then, after a warning; instead the warning is turned into an exception, which leaves
// Qt's event handling for good. Nothing of Qt may be expected to work afterwards. Window thread.
#pragma once

namespace platform {

// Thrown out of Qt's event handling when the connection to the display server is broken.
class DesktopBroken {};

// From now on the window thread gets that exception. Other messages of Qt go where they went.
void ThrowWhenDesktopBreaks();

}  // namespace platform
