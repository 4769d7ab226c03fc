#include "platform/desktop/qt_graphics.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPalette>
#include <array>
#include <cmath>

#include "platform/desktop/qt_canvas.h"
#include "platform/desktop/qt_font.h"
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

// By their numbers, COLOR_SCROLLBAR to COLOR_INFOBK.
constexpr std::array kRoles = {
    QPalette::Button,           // scroll bars
    QPalette::Window,           // the desktop's background
    QPalette::Highlight,        // caption of the active window
    QPalette::Window,           // caption of the others
    QPalette::Window,           // menus
    QPalette::Base,             // windows with contents
    QPalette::Shadow,           // frames
    QPalette::WindowText,       // text of menus
    QPalette::Text,             // text of contents
    QPalette::HighlightedText,  // text of the active caption
    QPalette::Window,           // border of the active window
    QPalette::Window,           // border of the others
    QPalette::Mid,              // background of applications with many documents
    QPalette::Highlight,        // what is selected
    QPalette::HighlightedText,  // text in it
    QPalette::Button,           // faces of buttons and dialogs
    QPalette::Dark,             // their shadow
    QPalette::WindowText,       // disabled text, in the colours of what is disabled
    QPalette::ButtonText,       // text of buttons
    QPalette::WindowText,       // text of inactive captions
    QPalette::Light,            // light edges
    QPalette::Shadow,           // dark edges
    QPalette::Midlight,         // edges of the light side
    QPalette::ToolTipText,      // text of hints
    QPalette::ToolTipBase,      // their background
};

const char* ClassShownIn(SystemFontUse use) {
  switch (use) {
    case SystemFontUse::kCaption:
      return "QMdiSubWindowTitleBar";
    case SystemFontUse::kMenu:
      return "QMenu";
    case SystemFontUse::kMessage:
      break;
  }
  return "QMessageBox";
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

bool QtGraphics::HasFace(const std::wstring& face) {
  return platform::HasFace(QString::fromStdWString(face));
}

std::unique_ptr<Canvas> QtGraphics::MakeCanvas(SIZE size) {
  return std::make_unique<QtMemoryCanvas>(size, qApp->devicePixelRatio());
}

COLORREF QtGraphics::SystemColour(int index) {
  const QPalette palette =
      QApplication::palette(index == COLOR_MENU || index == COLOR_MENUTEXT ? "QMenu" : "QWidget");
  const QColor colour = index == COLOR_GRAYTEXT
                            ? palette.color(QPalette::Disabled, QPalette::WindowText)
                            : palette.color(kRoles.at(static_cast<std::size_t>(index)));
  return RGB(colour.red(), colour.green(), colour.blue());
}

LOGFONTW QtGraphics::SystemFont(SystemFontUse use) {
  return LogicalFont(QApplication::font(ClassShownIn(use)));
}

}  // namespace platform
