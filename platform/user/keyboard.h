// What the calling thread knows of the keyboard: by the messages that it has taken from its queue,
// so that a program that lags behind sees the keys as they were.
#pragma once

#include <string>

#include "platform/user/input_message.h"

namespace platform {

// The message has been taken.
void NoteKeys(const InputMessage& input);

// What the key types while those are down that were with the last message.
std::wstring CharactersOf(UINT virtualKey);

}  // namespace platform
