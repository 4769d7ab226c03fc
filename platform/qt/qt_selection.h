// Text that another client of the display offers for pasting. That client may offer any amount and
// take any time, so the amount and the time are limited. Used on the window thread.
#pragma once

#include <QClipboard>
#include <QString>

namespace platform {

// Returns the beginning of the text, up to `most` characters; empty when none arrives in time.
// Handles events meanwhile, except the user's input.
QString SelectionText(QClipboard::Mode mode, qsizetype most);

}  // namespace platform
