// Message boxes on their way to the user, and who answers them. Without a desktop nobody does:
// MessageBoxW fails and logs its text. The simulated machine answers from data. Any thread.
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

// The button's identifier, or 0 for a failure.
using MessageBoxResponder = std::function<int(const MessageBoxRequest&)>;
void SetMessageBoxResponder(MessageBoxResponder responder);  // empty: as without a desktop

// What the desktop shows of a box.
struct MessageBoxButton {
  int id = 0;
  std::wstring caption;
};
struct MessageBoxView {
  WindowPeer* owner = nullptr;  // kept from the user meanwhile
  std::wstring text;
  std::wstring caption;
  UINT icon = 0;  // MB_ICON..., 0: none
  std::vector<MessageBoxButton> buttons;
  std::size_t defaultButton = 0;
  int escapeId = 0;  // what Escape and the close box answer; 0: they do nothing
  bool staysOnTop = false;
};
// What a box of its type shows, the owner excepted; nothing when the type is not supported.
std::optional<MessageBoxView> ViewOf(const MessageBoxRequest& request);

// A message box on the screen; closed by its destructor.
class ShownMessageBox {
 public:
  virtual ~ShownMessageBox() = default;

  // The button's identifier as soon as one has been chosen. The event loop is woken then.
  virtual std::optional<int> Answer() const = 0;
};

}  // namespace platform
