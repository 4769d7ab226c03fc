#include "platform/qt/qt_graphics.h"

#include <QApplication>
#include <QPalette>
#include <array>

#include "platform/qt/qt_canvas.h"
#include "platform/qt/qt_font.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_shown_font.h"

namespace platform {
namespace {

// Indexed by COLOR_SCROLLBAR to COLOR_INFOBK.
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

QtGraphics::~QtGraphics() {
  ForgetFonts();
}

SIZE QtGraphics::MeasureText(std::wstring_view text, const LOGFONTW& font) {
  QtShownFont& shown = ShownFont(font);
  return {shown.Shaped(text).width, shown.Metrics().height};
}

std::size_t QtGraphics::CountWithin(std::wstring_view text, int width, const LOGFONTW& font) {
  return ShownFont(font).CountWithin(text, width);
}

TextMetrics QtGraphics::MetricsOf(const LOGFONTW& font) {
  return ShownFont(font).Metrics();
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
