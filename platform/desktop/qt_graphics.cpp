#include "platform/desktop/qt_graphics.h"

#include <QApplication>
#include <QFont>

#include "platform/desktop/qt_peer.h"

namespace platform {

QFont QtFont(const LOGFONTW& font) {
  QFont made = QApplication::font();
  const QString face = QString::fromWCharArray(font.lfFaceName);
  if (!face.isEmpty() && face != "MS Shell Dlg") made.setFamily(face);
  if (font.lfHeight < 0) made.setPixelSize(-font.lfHeight);
  made.setBold(font.lfWeight >= 600);
  made.setItalic(font.lfItalic != 0);
  return made;
}

}  // namespace platform
