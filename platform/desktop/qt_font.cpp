#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <array>
#include <cmath>

#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

// What programs take for the desktop's font at 8 and 9 points, in pixels.
constexpr int kSmallHeight = 11;
constexpr int kLargeHeight = 12;
// From this weight on a face is bold; in between there are few faces to be had.
constexpr LONG kBoldWeight = 600;
constexpr BYTE kNotSmoothed = NONANTIALIASED_QUALITY;

// Faces that come with Windows alone, and the installed one that takes the least different room.
struct Substitute {
  const char* face;
  const char* installed;
};
constexpr std::array kSubstitutes = {Substitute{"Tahoma", "DejaVu Sans Condensed"}};

bool IsDesktopFace(const QString& face) {
  return face.isEmpty() || face == "MS Shell Dlg" || face == "MS Shell Dlg 2";
}

QString InstalledFace(const QString& face) {
  if (QFontDatabase::hasFamily(face)) return face;
  for (const Substitute& each : kSubstitutes) {
    if (face == each.face && QFontDatabase::hasFamily(each.installed)) return each.installed;
  }
  return QApplication::font().family();
}

// The size at which a line is that high; for a positive height, which counts the whole line.
int PixelSizeOfLine(QFont font, LONG height) {
  constexpr int kSample = 100;
  font.setPixelSize(kSample);
  return qMax(1, qRound(height * kSample / QFontMetricsF(font).height()));
}

// A dialog asks for the desktop's font at 8 or 9 points and means whatever the user has chosen;
// other sizes stand in proportion to that.
int DesktopPixelSize(int height) {
  const int chosen = QFontInfo(QApplication::font()).pixelSize();
  if (height < kSmallHeight) return qMax(1, qRound(1.0 * chosen * height / kSmallHeight));
  if (height > kLargeHeight) return qRound(1.0 * chosen * height / kLargeHeight);
  return chosen;
}

void SetSize(QFont& font, LONG height, bool isDesktopFace) {
  if (height > 0) {
    font.setPixelSize(PixelSizeOfLine(font, height));
  } else if (height < 0) {
    font.setPixelSize(isDesktopFace ? DesktopPixelSize(-height) : -height);
  }
}

}  // namespace

QFont QtFont(const LOGFONTW& font) {
  QFont made = QApplication::font();
  const QString face = QString::fromWCharArray(font.lfFaceName);
  const bool isDesktopFace = IsDesktopFace(face);
  if (!isDesktopFace) made.setFamily(InstalledFace(face));
  made.setBold(font.lfWeight >= kBoldWeight);
  made.setItalic(font.lfItalic != 0);
  made.setUnderline(font.lfUnderline != 0);
  made.setStrikeOut(font.lfStrikeOut != 0);
  if (font.lfQuality == kNotSmoothed) made.setStyleStrategy(QFont::NoAntialias);
  SetSize(made, font.lfHeight, isDesktopFace);
  return made;
}

}  // namespace platform
