#include "platform/qt/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_peer.h"

namespace platform {

QtEventLoop::QtEventLoop(QtDisplayWatch& watch) : watch_(watch) {
  limit_.setSingleShot(true);
  limit_.setTimerType(Qt::PreciseTimer);
}

void QtEventLoop::Wait(std::optional<std::chrono::milliseconds> limit) {
  if (broken_) return;
  ++depth_;
  if (!SurvivesUse([&] { HandleEvents(limit); })) {
    broken_ = true;
    watch_.OnLost();
  }
  watch_.OnBusy();
  --depth_;
  // In a nested wait, a retired widget may be the one whose event the outer wait is handling.
  if (depth_ == 0 && !broken_) EndRetiredWidgets();
}

void QtEventLoop::HandleEvents(std::optional<std::chrono::milliseconds> limit) {
  const bool mayBlock = !limit.has_value() || limit->count() > 0;
  if (woken_.exchange(false) || !mayBlock) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    return;
  }
  // The timer's event ends the wait; it needs no receiver.
  if (limit.has_value()) limit_.start(*limit);
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
  limit_.stop();
  woken_ = false;
}

void QtEventLoop::Wake() {
  woken_ = true;
  limit_.thread()->eventDispatcher()->wakeUp();
}

}  // namespace platform
