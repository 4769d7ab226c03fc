// Conversions between logical fonts and fonts of Qt. QtFont, the other direction, is in qt_peer.h.
// Used on the window thread.
#pragma once

#include <windows.h>

#include <QFont>
#include <QString>

namespace platform {

// Whether QtFont finds this face or a substitute for it.
bool HasFace(const QString& face);

// Returns a logical font that QtFont converts back to this font.
LOGFONTW LogicalFont(const QFont& font);

}  // namespace platform
