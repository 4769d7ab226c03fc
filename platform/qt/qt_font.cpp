#include "platform/qt/qt_font.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <array>

#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

// The heights of the desktop's font that programs expect at 8 and 9 points, in pixels.
constexpr int kSmallHeight = 11;
constexpr int kLargeHeight = 12;
// From this weight on a face is bold; few fonts have weights in between.
constexpr LONG kBoldWeight = 600;
constexpr BYTE kNotSmoothed = NONANTIALIASED_QUALITY;

// Faces that come with Windows only, each with the installed face of the most similar width.
struct Substitute {
  const char* face;
  const char* installed;
  // The letter spacing in percent that makes texts as wide as in the original face.
  qreal spacing;
};
constexpr std::array kSubstitutes = {Substitute{"Tahoma", "DejaVu Sans Condensed", 97},
                                     Substitute{"Verdana Bold", "DejaVu Sans", 100}};

bool IsDesktopFace(const QString& face) {
  return face.isEmpty() || face.compare("MS Shell Dlg", Qt::CaseInsensitive) == 0 ||
         face.compare("MS Shell Dlg 2", Qt::CaseInsensitive) == 0;
}

const Substitute* SubstituteOf(const QString& face) {
  for (const Substitute& each : kSubstitutes) {
    if (face.compare(each.face, Qt::CaseInsensitive) == 0) return &each;
  }
  return nullptr;
}

// Sets the face or its substitute; leaves the font as it is when neither is installed.
void SetFace(QFont& font, const QString& face) {
  if (QFontDatabase::hasFamily(face)) {
    font.setFamily(face);
    return;
  }
  const Substitute* substitute = SubstituteOf(face);
  if (substitute == nullptr || !QFontDatabase::hasFamily(substitute->installed)) return;
  font.setFamily(substitute->installed);
  font.setLetterSpacing(QFont::PercentageSpacing, substitute->spacing);
}

// The pixel size for a positive lfHeight, which is the height of the whole line.
int PixelSizeOfLine(QFont font, LONG height) {
  constexpr int kSample = 100;
  font.setPixelSize(kSample);
  return qMax(1, qRound(height * kSample / QFontMetricsF(font).height()));
}

// A dialog that requests the desktop's font at 8 or 9 points gets the size that the user has
// chosen. Other sizes are scaled in proportion.
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
  if (!isDesktopFace) SetFace(made, face);
  made.setBold(font.lfWeight >= kBoldWeight);
  made.setItalic(font.lfItalic != 0);
  made.setUnderline(font.lfUnderline != 0);
  made.setStrikeOut(font.lfStrikeOut != 0);
  if (font.lfQuality == kNotSmoothed) made.setStyleStrategy(QFont::NoAntialias);
  SetSize(made, font.lfHeight, isDesktopFace);
  return made;
}

bool HasFace(const QString& face) {
  return IsDesktopFace(face) || QFontDatabase::hasFamily(face) || SubstituteOf(face) != nullptr;
}

LOGFONTW LogicalFont(const QFont& font) {
  const QFontInfo info(font);
  LOGFONTW logical{};
  logical.lfHeight = -info.pixelSize();
  logical.lfWeight = info.weight();
  logical.lfItalic = info.italic() ? TRUE : FALSE;
  logical.lfCharSet = DEFAULT_CHARSET;
  info.family().left(LF_FACESIZE - 1).toWCharArray(logical.lfFaceName);
  return logical;
}

}  // namespace platform
