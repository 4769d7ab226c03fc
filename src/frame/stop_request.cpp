#include "frame/stop_request.h"

namespace quillgate {

void StopRequest::Raise() {
  raised_ = true;
  const HWND owner = menuOwner_;
  if (owner != nullptr) ::PostMessageW(owner, WM_CANCELMODE, 0, 0);
}

}  // namespace quillgate
