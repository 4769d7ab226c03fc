// What every dialog and page of the program is given to work with. All of it outlives them.
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
