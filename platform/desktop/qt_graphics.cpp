#include "platform/desktop/qt_graphics.h"

#include <QFontMetricsF>
#include <cmath>

#include "platform/desktop/qt_peer.h"

namespace platform {
namespace {

LONG WholePixels(double length) {
  return static_cast<LONG>(std::ceil(length));
}

// As dialogs measure their font: over all letters, rounded to the nearest.
int AverageLetterWidth(const QFontMetricsF& metrics) {
  static const QString kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  return qRound(metrics.horizontalAdvance(kLetters) / static_cast<double>(kLetters.size()));
}

}  // namespace

SIZE QtGraphics::MeasureText(const std::wstring& text, const LOGFONTW& font) {
  const QFontMetricsF metrics(QtFont(font));
  const double width = metrics.horizontalAdvance(QString::fromStdWString(text));
  return {WholePixels(width), WholePixels(metrics.height())};
}

TextMetrics QtGraphics::MetricsOf(const LOGFONTW& font) {
  const QFontMetricsF metrics(QtFont(font));
  return {WholePixels(metrics.height()), WholePixels(metrics.ascent()),
          AverageLetterWidth(metrics)};
}

}  // namespace platform
