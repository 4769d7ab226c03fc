// Logical fonts and those of Qt; the way there is QtFont of qt_peer. Used on the window thread.
#pragma once

#include <windows.h>

#include <QFont>
#include <QString>

namespace platform {

// Whether QtFont takes this face or one that stands in for it.
bool HasFace(const QString& face);

// A logical font for which QtFont gives this font again.
LOGFONTW LogicalFont(const QFont& font);

}  // namespace platform
