// The help viewer: the module "hhctrl.ocx", which programs load to show compiled help. Any thread;
// the windows are those of the window thread.
#pragma once

#include "platform/kernel/modules.h"

namespace platform {

// The exports of the module: HtmlHelpW, by name and by the documented ordinal.
ExportTable HelpViewerExports();

}  // namespace platform
