// Message boxes: what is requested, what the desktop shows, and a responder in place of the
// desktop. The simulated machine supplies responses from data. Without a desktop MessageBoxW fails
// and logs its text. Any thread.
#pragma once

#include <windef.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/user/window_peer.h"

namespace platform {

struct MessageBoxRequest {
  HWND owner = nullptr;
  std::wstring text;
  std::wstring caption;
  UINT type = 0;
};

// Returns the button's identifier, or 0 for a failure.
using MessageBoxResponder = std::function<int(const MessageBoxRequest&)>;
void SetMessageBoxResponder(MessageBoxResponder responder);  // empty: as without a desktop

// What the desktop shows of a message box.
struct MessageBoxButton {
  int id = 0;
  std::wstring caption;
};
struct MessageBoxView {
  WindowPeer* owner = nullptr;  // gets no input meanwhile
  std::wstring text;
  std::wstring caption;
  UINT icon = 0;  // MB_ICON..., 0: none
  std::vector<MessageBoxButton> buttons;
  std::size_t defaultButton = 0;
  int escapeId = 0;  // result of Escape and the close box; 0: both are ignored
  bool staysOnTop = false;
};
// The view of a box of the requested type, without its owner; nothing when the type is not
// supported.
std::optional<MessageBoxView> ViewOf(const MessageBoxRequest& request);

// A message box on the screen; closed by its destructor.
class ShownMessageBox {
 public:
  virtual ~ShownMessageBox() = default;

  // The identifier of the chosen button; nothing while none has been chosen. The choice wakes the
  // event loop.
  virtual std::optional<int> Answer() const = 0;
};

}  // namespace platform
