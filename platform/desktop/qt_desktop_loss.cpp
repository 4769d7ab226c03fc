#include "platform/desktop/qt_desktop_loss.h"

#include <QCoreApplication>
#include <QString>
#include <QThread>

namespace platform {
namespace {

QtMessageHandler handlerBefore = nullptr;

// As the platform plugins of X11 and Wayland word it, directly before they end the process.
bool TellsOfBrokenConnection(const QString& text) {
  return text.startsWith("The X11 connection broke") ||
         text.startsWith("The Wayland connection broke");
}

void OnMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  handlerBefore(type, context, text);
  const QCoreApplication* application = QCoreApplication::instance();
  const bool isWindowThread =
      application != nullptr && QThread::currentThread() == application->thread();
  if (isWindowThread && TellsOfBrokenConnection(text)) throw DesktopBroken();
}

}  // namespace

void ThrowWhenDesktopBreaks() {
  const QtMessageHandler before = qInstallMessageHandler(OnMessage);
  if (before != OnMessage) handlerBefore = before;
}

}  // namespace platform
