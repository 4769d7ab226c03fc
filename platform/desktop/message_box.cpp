#include "platform/desktop/message_box.h"

#include <windows.h>

#include <QString>

namespace platform {
namespace {

constexpr UINT kButtonsMask = 0x0F;  // MB_TYPEMASK
constexpr UINT kIconMask = 0xF0;     // MB_ICONMASK

QMessageBox::Icon IconOf(UINT type) {
  switch (type & kIconMask) {
    case MB_ICONERROR:
      return QMessageBox::Critical;
    case MB_ICONQUESTION:
      return QMessageBox::Question;
    case MB_ICONEXCLAMATION:
      return QMessageBox::Warning;
    case MB_ICONINFORMATION:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

QMessageBox::StandardButtons ButtonsOf(UINT type) {
  switch (type & kButtonsMask) {
    case MB_OKCANCEL:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case MB_YESNO:
      return QMessageBox::Yes | QMessageBox::No;
    default:
      return QMessageBox::Ok;
  }
}

int IdentifierOf(int button) {
  switch (button) {
    case QMessageBox::Ok:
      return IDOK;
    case QMessageBox::Yes:
      return IDYES;
    case QMessageBox::No:
      return IDNO;
    default:
      return IDCANCEL;
  }
}

// The first button, as documented for boxes whose type does not name another.
QMessageBox::StandardButton DefaultOf(UINT type) {
  return (type & kButtonsMask) == MB_YESNO ? QMessageBox::Yes : QMessageBox::Ok;
}

}  // namespace

QtMessageBox::QtMessageBox(const MessageBoxRequest& request, EventLoop& loop) {
  box_.setIcon(IconOf(request.type));
  box_.setWindowTitle(QString::fromStdWString(request.caption));
  box_.setTextFormat(Qt::PlainText);
  box_.setText(QString::fromStdWString(request.text));
  box_.setStandardButtons(ButtonsOf(request.type));
  box_.setDefaultButton(DefaultOf(request.type));
  box_.setWindowModality(Qt::ApplicationModal);
  QObject::connect(&box_, &QMessageBox::finished, [this, &loop](int button) {
    answer_ = IdentifierOf(button);
    loop.Wake();
  });
  box_.show();
}

}  // namespace platform
