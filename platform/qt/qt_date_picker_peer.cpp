// Date pickers as Qt's date field with its calendar.
#include <commctrl.h>

#include <QCalendarWidget>
#include <QDateEdit>
#include <QEvent>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_paste.h"

namespace platform {
namespace {

QDate QtDate(const PickedDate& date) {
  return {date.year, date.month, date.day};
}

// The locale "C" stands for American English, as everywhere in the layer.
QLocale UserLocale() {
  const QLocale system = QLocale::system();
  return system.language() == QLocale::C ? QLocale("en_US") : system;
}

// The user's short date format, with four digits of the year: a year of two digits could not be
// edited.
QString ShortFormat() {
  QString format = UserLocale().dateFormat(QLocale::ShortFormat);
  if (!format.contains("yyyy")) format.replace("yy", "yyyy");
  return format;
}

class CalendarWatch final : public QObject {
 public:
  explicit CalendarWatch(DatePickerEvents& events) : events_(events) {}

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Show) events_.OnCalendarShown(true);
    if (event->type() == QEvent::Hide) events_.OnCalendarShown(false);
    return false;
  }

  DatePickerEvents& events_;
};

class QtDatePickerPeer final : public QtControlPeer<DatePickerPeer> {
 public:
  QtDatePickerPeer(QDateEdit* edit, const PeerOrigin& origin, DatePickerEvents& events)
      : QtControlPeer(edit, origin), edit_(edit), watch_(events) {
    edit->setFocusPolicy(FocusPolicyOf(origin.style));
    edit->setLocale(UserLocale());
    edit->setDisplayFormat(ShortFormat());
    edit->setCalendarPopup(true);
    edit->calendarWidget()->setLocale(UserLocale());
    edit->calendarWidget()->setFirstDayOfWeek(UserLocale().firstDayOfWeek());
    edit->calendarWidget()->installEventFilter(&watch_);
    SetCalendarStyle(0);
    // Includes the year field of the calendar.
    for (QLineEdit* each : edit->findChildren<QLineEdit*>())
      new QtPaste(*each);
    QObject::connect(edit, &QDateEdit::dateChanged, Context(), [&events](QDate date) {
      events.OnPicked({date.year(), date.month(), date.day()});
    });
  }

  void SetText(const std::wstring& /*text*/) override {}
  void SetDate(const PickedDate& date) override {
    const QSignalBlocker silence(edit_);
    edit_->setDate(QtDate(date));
  }
  void SetRange(const PickedDate& first, const PickedDate& last) override {
    const QSignalBlocker silence(edit_);
    edit_->setDateRange(QtDate(first), QtDate(last));
  }
  void SetCalendarStyle(DWORD style) override {
    const bool weekNumbers = (style & MCS_WEEKNUMBERS) != 0;
    edit_->calendarWidget()->setVerticalHeaderFormat(
        weekNumbers ? QCalendarWidget::ISOWeekNumbers : QCalendarWidget::NoVerticalHeader);
  }

 private:
  QPointer<QDateEdit> edit_;
  CalendarWatch watch_;
};

}  // namespace

std::unique_ptr<DatePickerPeer> QtControlPeers::MakeDatePicker(const PeerOrigin& origin,
                                                               DatePickerEvents& events) {
  return std::make_unique<QtDatePickerPeer>(new QDateEdit(WidgetOf(origin.parent)), origin, events);
}

}  // namespace platform
