// A mouse or keyboard message that waits in a thread's queue, with the state of the keyboard at the
// time.
#pragma once

#include <windows.h>

#include <string>

#include "platform/user/key_set.h"

namespace platform {

struct InputMessage {
  MSG message{};
  // Keys and buttons that were down, the one of the message included.
  KeySet keys;
  // For a key that went down: the text that the user's keyboard layout produces.
  std::wstring text;
};

}  // namespace platform
