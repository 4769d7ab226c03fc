// What a message box shows for its type. Any thread.
#pragma once

#include <optional>

#include "platform/dialog/message_box.h"

namespace platform {

// Nothing when the type is not supported. The owner is not filled in.
std::optional<MessageBoxView> ViewOf(const MessageBoxRequest& request);

}  // namespace platform
