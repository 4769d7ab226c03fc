// What another program on the display offers to be pasted. It may offer any amount and need any
// time, so a limited part is taken, in limited time. Used on the window thread.
#pragma once

#include <QClipboard>
#include <QString>

namespace platform {

// The beginning of the text, up to that many characters; empty when there is none in time. Events
// are handled meanwhile, the user's input excepted.
QString SelectionText(QClipboard::Mode mode, qsizetype most);

}  // namespace platform
