// Dialog templates among the executable's resources. Any thread.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/dialog/dialog_template.h"

namespace platform {

// The dialog template with that number (RT_DIALOG): in the user's language, else in the neutral
// one, else in any. Nothing, with the last error set and a log line, when there is none or it
// cannot be read.
std::optional<DialogTemplate> FindDialogTemplate(HINSTANCE instance, LPCWSTR name);

}  // namespace platform
