// Mouse and keyboard input in windows of registered classes, as messages. Input waits in the
// thread's queue behind posted messages. It takes effect when it is removed from the queue: the
// state of the keys changes then, and WM_SETCURSOR is sent. For the window thread.
#pragma once

#include "platform/user/input_message.h"
#include "platform/user/window.h"

namespace platform {

// Called inside an event of the desktop. Mouse input in a disabled window goes to the first enabled
// window around it.
void QueueMouse(const Window& window, const MouseInput& input);
void QueueKey(const Window& window, const KeyInput& input);

// Applies input that was removed from the calling thread's queue. False when its window has been
// destroyed or disabled meanwhile; the message is dropped then.
bool AcceptInput(const InputMessage& input);

}  // namespace platform
