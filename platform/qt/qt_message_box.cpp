#include "platform/qt/qt_message_box.h"

#include <windows.h>

#include <QPushButton>
#include <QString>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_peer.h"

namespace platform {
namespace {

constexpr const char* kIdProperty = "buttonId";

QMessageBox::Icon IconOf(UINT icon) {
  switch (icon) {
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

}  // namespace

QtMessageBox::QtMessageBox(const MessageBoxView& view, EventLoop& loop)
    : box_(new QMessageBox(WidgetOf(view.owner))) {
  box_->setIcon(IconOf(view.icon));
  box_->setWindowTitle(QString::fromStdWString(view.caption));
  box_->setTextFormat(Qt::PlainText);
  box_->setText(QString::fromStdWString(view.text));
  if (view.owner != nullptr) box_->setWindowModality(Qt::WindowModal);
  if (view.staysOnTop) box_->setWindowFlag(Qt::WindowStaysOnTopHint);
  if (view.escapeId == 0) box_->setWindowFlag(Qt::WindowCloseButtonHint, false);
  AddButtons(view);
  QObject::connect(box_, &QMessageBox::finished, [this, &loop, escapeId = view.escapeId] {
    // The close box reports no clicked button.
    const auto* clicked = box_->clickedButton();
    answer_ = clicked != nullptr ? clicked->property(kIdProperty).toInt() : escapeId;
    loop.Wake();
  });
  SurvivesUse([this] {
    box_->show();
    box_->raise();
    box_->activateWindow();
  });
}

QtMessageBox::~QtMessageBox() {
  if (box_ == nullptr) return;
  box_->disconnect();
  RetireWidget(box_);
}

// All buttons have the same role, so that they keep their order on every desktop.
void QtMessageBox::AddButtons(const MessageBoxView& view) {
  for (const MessageBoxButton& each : view.buttons) {
    QPushButton* button =
        box_->addButton(QString::fromStdWString(each.caption), QMessageBox::ActionRole);
    button->setProperty(kIdProperty, each.id);
    button->setObjectName(QString::number(each.id));
    if (each.id == view.escapeId) box_->setEscapeButton(button);
    if (&each == &view.buttons[view.defaultButton]) box_->setDefaultButton(button);
  }
}

}  // namespace platform
