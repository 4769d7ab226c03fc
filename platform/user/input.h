// What the user does with mouse and keyboard in windows of registered classes, as messages. It
// waits in the thread's queue behind what was posted, and counts when it is taken from there: the
// keys that are down change then, and WM_SETCURSOR is sent. Used on the window thread.
#pragma once

#include "platform/user/input_message.h"
#include "platform/user/window.h"

namespace platform {

// Notified inside an event of the desktop. What is done in a disabled window is for the first
// enabled one around it.
void QueueMouse(const Window& window, const MouseInput& input);
void QueueKey(const Window& window, const KeyInput& input);

// The message has been taken from the calling thread's queue. False when its window has ended or
// been disabled meanwhile, so that there is no message any more.
bool AcceptInput(const InputMessage& input);

}  // namespace platform
