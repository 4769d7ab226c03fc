// A message of the mouse or the keyboard that waits in a thread's queue, with what the keyboard was
// like then.
#pragma once

#include <windows.h>

#include <string>

#include "platform/user/key_set.h"

namespace platform {

struct InputMessage {
  MSG message{};
  // What was down, the key or button itself included.
  KeySet keys;
  // Of a key that went down: what the user's keyboard layout makes of it.
  std::wstring text;
};

}  // namespace platform
