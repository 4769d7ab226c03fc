// The calling thread's view of the keyboard. It follows the messages that the thread has removed
// from its queue, so a thread that lags behind sees the keys as they were.
#pragma once

#include <string>

#include "platform/user/input_message.h"

namespace platform {

// Records the key state of a message that was removed from the queue.
void NoteKeys(const InputMessage& input);

// The text that the key produces with the modifier keys of the last message.
std::wstring CharactersOf(UINT virtualKey);

}  // namespace platform
