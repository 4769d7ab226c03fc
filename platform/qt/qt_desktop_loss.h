// The display server may refuse the program or go while it runs: its user logs off, it crashes, or
// it is made to. Qt would end the process then, after a message. Nothing of Qt may be expected to
// work after what is told here. Window thread.
#pragma once

#include <functional>

namespace platform {

// Runs the work, in which Qt joins the desktop. False when that failed: the work is left where it
// was, as if it had never come back, with all that it holds.
bool SurvivesJoining(const std::function<void()>& work);

// Joining that waits for a connection fails. Any thread, while joining is under way.
void InterruptJoining();

// Qt has joined the desktop.
void TakeOverXlibErrors();

// Runs the work, in which Qt handles events or calls Xlib, as it does for titles and pointers.
// False when the desktop is lost: the work was left where it was, or not begun.
bool SurvivesUse(const std::function<void()>& work);

}  // namespace platform
