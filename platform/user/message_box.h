// Who answers message boxes. Without a desktop nobody does: MessageBoxW fails and logs its text.
// The simulated machine answers from data. Any thread.
#pragma once

#include <windef.h>

#include <functional>
#include <string>

namespace platform {

struct MessageBoxRequest {
  HWND owner = nullptr;
  std::wstring text;
  std::wstring caption;
  UINT type = 0;
};

// The button's identifier, or 0 for a failure.
using MessageBoxResponder = std::function<int(const MessageBoxRequest&)>;
void SetMessageBoxResponder(MessageBoxResponder responder);  // empty: as without a desktop

}  // namespace platform
