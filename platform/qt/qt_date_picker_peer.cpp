// Date pickers as Qt's date field with its calendar.
#include <commctrl.h>

#include <QCalendarWidget>
#include <QDateEdit>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOption>
#include <algorithm>
#include <functional>

#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_desktop_loss.h"
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

// The date field. The calendar drops down when the control shows it; what is typed counts when it
// is complete or left. The toolkit would take each digit as a date, bounded by the range.
class DateField final : public QDateEdit {
 public:
  explicit DateField(QWidget* parent) : QDateEdit(parent) {
    setKeyboardTracking(false);
    setCalendarPopup(true);
  }

  std::function<void()> onCalendarRequested;

  void ShowCalendar() {
    const QStyleOptionComboBox option = Option();
    const QRect arrow =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
    QMouseEvent press(QEvent::MouseButtonPress, arrow.center(), mapToGlobal(arrow.center()),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QDateEdit::mousePressEvent(&press);
  }

 private:
  QStyleOptionComboBox Option() const {
    QStyleOptionComboBox option;
    option.initFrom(this);
    option.editable = true;
    option.subControls = QStyle::SC_All;
    return option;
  }
  bool IsOnArrow(const QPoint& place) const {
    const QStyleOptionComboBox option = Option();
    return style()->hitTestComplexControl(QStyle::CC_ComboBox, &option, place, this) ==
           QStyle::SC_ComboBoxArrow;
  }
  void RequestCalendar() {
    if (onCalendarRequested && !calendarWidget()->isVisible()) onCalendarRequested();
  }

  void mousePressEvent(QMouseEvent* event) override {
    if (IsOnArrow(event->position().toPoint())) {
      RequestCalendar();
    } else {
      QDateEdit::mousePressEvent(event);
    }
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (DropsDown(*event)) return RequestCalendar();
    const int section = currentSectionIndex();
    QDateEdit::keyPressEvent(event);
    if (currentSectionIndex() != section || IsSectionComplete()) interpretText();
  }

  static bool DropsDown(const QKeyEvent& event) {
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier;
    return (event.key() == Qt::Key_F4 && modifiers == Qt::NoModifier) ||
           (event.key() == Qt::Key_Down && modifiers == Qt::AltModifier);
  }
  bool IsSectionComplete() const {
    const QString text = sectionText(currentSection());
    const bool isNumber = std::ranges::all_of(text, [](QChar each) { return each.isDigit(); });
    return isNumber && text.size() == (currentSection() == YearSection ? 4 : 2);
  }
};

class CalendarWatch final : public QObject {
 public:
  explicit CalendarWatch(DatePickerEvents& events) : events_(events) {}

 private:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Hide) events_.OnCalendarClosed();
    return false;
  }

  DatePickerEvents& events_;
};

class QtDatePickerPeer final : public QtControlPeer<DatePickerPeer> {
 public:
  QtDatePickerPeer(DateField* edit, const PeerOrigin& origin, DatePickerEvents& events)
      : QtControlPeer(edit, origin), edit_(edit), watch_(events) {
    edit->onCalendarRequested = [&events] { events.OnCalendarRequested(); };
    edit->setFocusPolicy(FocusPolicyOf(origin.style));
    edit->setLocale(UserLocale());
    edit->setDisplayFormat(ShortFormat());
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

  // The widget may outlive the peer.
  ~QtDatePickerPeer() override {
    if (edit_ != nullptr) edit_->onCalendarRequested = nullptr;
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
  void ShowCalendar() override {
    SurvivesUse([this] { edit_->ShowCalendar(); });
  }

 private:
  QPointer<DateField> edit_;
  CalendarWatch watch_;
};

}  // namespace

std::unique_ptr<DatePickerPeer> QtControlPeers::MakeDatePicker(const PeerOrigin& origin,
                                                               DatePickerEvents& events) {
  return std::make_unique<QtDatePickerPeer>(new DateField(WidgetOf(origin.parent)), origin, events);
}

}  // namespace platform
