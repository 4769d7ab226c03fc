// The objects that every dialog and page of the program works with. All of them outlive the dialogs
// and pages.
#pragma once

#include "frame/stop_request.h"
#include "text/message_catalogue.h"

namespace quillgate {

class HelpSystem;

struct UiSurroundings {
  const MessageCatalogue& catalogue;
  HelpSystem& help;
  const StopRequest& stop;
};

}  // namespace quillgate
