#include <QAbstractEventDispatcher>
#include <cerrno>
#include <clocale>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls/control_peers.h"
#include "platform/dialog/dialog_peers.h"
#include "platform/qt/qt_application.h"
#include "platform/qt/qt_control_peers.h"
#include "platform/qt/qt_desktop_loss.h"
#include "platform/qt/qt_dialog_peers.h"
#include "platform/qt/qt_display_watch.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_graphics.h"
#include "platform/qt/qt_menus.h"
#include "platform/qt/qt_message_box.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_screen_bounds.h"
#include "platform/qt/qt_tray.h"
#include "platform/qt/qt_window_peers.h"
#include "platform/qt/qt_x11.h"
#include "platform/shell/tray_backend.h"
#include "platform/user/desktop_module.h"

namespace platform {
namespace {

// Qt keeps its record of the thread that made the application until the process ends, and counts on
// that thread's being the first, which never ends before. An object that stays holds the record.
void KeepThreadRecord() {
  static auto& keepers = *new std::vector<QObject*>;
  keepers.push_back(new QObject);
}

// Qt's loop over GLib's stays with the thread that ran it first: on X11 the windows of a thread
// that joins the desktop later are not painted. Qt's own loop has no such trouble.
bool ForgoGlib() {
  return ::qputenv("QT_NO_GLIB", "1");
}

// Without an address of the session's message bus, the toolkit's library for it would run a program
// that takes one from the display, where anybody may have put it.
bool ForgoForeignBus() {
  constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";
  if (!qEnvironmentVariableIsEmpty(kAddress)) return false;
  const QByteArray folder = ::qgetenv("XDG_RUNTIME_DIR");
  return ::qputenv(kAddress, folder.isEmpty() ? "disabled:" : "unix:path=" + folder + "/bus");
}

class QtDesktop final : public DesktopModule,
                        public ControlSide,
                        public DialogSide,
                        public TraySide {
 public:
  // The watch stays the caller's until Own.
  explicit QtDesktop(QtDisplayWatch& watch) : watch_(watch) {
    // Qt has taken over the user's locale; a program that reads and writes numbers in the locale
    // it started with would find its decimal point changed.
    std::setlocale(LC_ALL, localeBefore_.c_str());
    QApplication::setQuitOnLastWindowClosed(false);
    KeepThreadRecord();
    TakeOverXlibErrors();
    watch.OnJoined(X11Connection());
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     [&watch] { watch.OnIdle(); });
  }

  ~QtDesktop() override {
    EndRetiredWidgets();
    watch_.OnLeaving();
  }
  QtDesktop(const QtDesktop&) = delete;
  QtDesktop& operator=(const QtDesktop&) = delete;

  void Own(std::unique_ptr<QtDisplayWatch> watch) { ownedWatch_ = std::move(watch); }

  EventLoop& Loop() override { return loop_; }
  WindowPeers& Windows() override { return windows_; }
  ControlPeers& Controls() override { return controls_; }
  DialogPeers& Dialogs() override { return dialogs_; }
  GraphicsBackend& Graphics() override { return graphics_; }
  MenuBackend& Menus() override { return menus_; }
  TrayBackend& Tray() override { return tray_; }
  KeySet KeysDown() override { return application_.KeysDown(); }
  void Beep() override { QApplication::beep(); }
  std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxView& view) override {
    return std::make_unique<QtMessageBox>(view, loop_);
  }

 private:
  // Outlives the application, whose end it watches, too.
  std::unique_ptr<QtDisplayWatch> ownedWatch_;
  QtDisplayWatch& watch_;
  // Qt keeps references to these as long as the application lives. The program's name is what
  // window managers know its windows by.
  std::string name_ = program_invocation_short_name;
  char* arguments_[2] = {name_.data(), nullptr};
  int argumentCount_ = 1;
  const std::string localeBefore_ = std::setlocale(LC_ALL, nullptr);
  [[maybe_unused]] const bool withoutGlib_ = ForgoGlib();
  [[maybe_unused]] const bool withoutForeignBus_ = ForgoForeignBus();
  QtApplication application_{argumentCount_, arguments_, watch_};
  const QtResizeGuard resizeGuard_;
  QtEventLoop loop_{watch_};
  QtGraphics graphics_;
  QtWindowPeers windows_;
  QtControlPeers controls_;
  QtDialogPeers dialogs_;
  QtMenus menus_;
  QtTray tray_;
};

std::unique_ptr<DesktopModule> MakeDesktop() {
  auto watch = std::make_unique<QtDisplayWatch>();
  QtDesktop* desktop = nullptr;
  if (!SurvivesJoining([&] { desktop = new QtDesktop(*watch); })) {
    // Threads of the toolkit may still be reading.
    BreakDisplayConnection();
    return nullptr;
  }
  desktop->Own(std::move(watch));
  return std::unique_ptr<DesktopModule>(desktop);
}

}  // namespace
}  // namespace platform

extern "C" __attribute__((visibility("default"))) platform::DesktopModule*
CreateDesktopModule() noexcept {
  try {
    return platform::MakeDesktop().release();
  } catch (const std::exception&) {
    return nullptr;
  }
}
