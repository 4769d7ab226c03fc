// Dialogs as Qt widgets. Lives on the window thread.
#pragma once

#include "platform/dialog/dialog_peers.h"

namespace platform {

class QtDialogPeers final : public DialogPeers {
 public:
  std::unique_ptr<DialogPeer> MakeDialog(WindowEvents& events, DialogEvents& dialogEvents,
                                         WindowPeer* owner) override;
};

}  // namespace platform
