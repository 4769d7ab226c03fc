// Survives the loss of the desktop. The display server may refuse the connection, or close it at
// any time: the user logs off, the server crashes, or it is shut down. Qt would then end the
// process after a message. After a failure that is reported here, Qt must not be expected to work.
// Window thread.
#pragma once

#include <functional>

namespace platform {

// Runs the work, in which Qt joins the desktop. Returns false when joining failed: the work was
// abandoned without unwinding, and everything it holds leaks.
bool SurvivesJoining(const std::function<void()>& work);

// Makes joining fail when it waits for a connection. Any thread, only while joining is under way.
void InterruptJoining();

// Replaces Xlib's error exit. To be called when Qt has joined the desktop.
void TakeOverXlibErrors();

// Runs the work, in which Qt handles events or calls Xlib, as it does to set titles and pointers.
// Returns false when the desktop is lost: the work was abandoned or did not start.
bool SurvivesUse(const std::function<void()>& work);

}  // namespace platform
