#include <QAbstractEventDispatcher>
#include <QClipboard>
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
#include "platform/qt/qt_help.h"
#include "platform/qt/qt_menus.h"
#include "platform/qt/qt_message_box.h"
#include "platform/qt/qt_peer.h"
#include "platform/qt/qt_screen_bounds.h"
#include "platform/qt/qt_tray.h"
#include "platform/qt/qt_window_peers.h"
#include "platform/qt/qt_x11.h"
#include "platform/shell/help_peers.h"
#include "platform/shell/tray_backend.h"
#include "platform/user/desktop_module.h"

namespace platform {
namespace {

// Qt refers to the record of the thread that created the application until the process ends. It
// assumes that this is the main thread, which lives as long. A QObject that is never deleted keeps
// the record.
void KeepThreadRecord() {
  static auto& keepers = *new std::vector<QObject*>;
  keepers.push_back(new QObject);
}

// Turns off Qt's event dispatcher for GLib. It stays bound to the first thread that ran it: on X11
// the windows of a thread that joins the desktop later would not be painted. Qt's own dispatcher
// works on any thread.
bool DisableGlib() {
  return ::qputenv("QT_NO_GLIB", "1");
}

// Without an address of the session's message bus, the toolkit's D-Bus library would run a program
// that reads one from the display, where any client can set it.
bool DisableForeignBus() {
  constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";
  if (!qEnvironmentVariableIsEmpty(kAddress)) return false;
  const QByteArray folder = ::qgetenv("XDG_RUNTIME_DIR");
  return ::qputenv(kAddress, folder.isEmpty() ? "disabled:" : "unix:path=" + folder + "/bus");
}

class QtDesktop final : public DesktopModule,
                        public ControlSide,
                        public DialogSide,
                        public TraySide,
                        public HelpSide {
 public:
  // The caller owns the watch until it calls Own.
  explicit QtDesktop(QtDisplayWatch& watch) : watch_(watch) {
    // Qt sets the user's locale. Programs read and write numbers in the locale that they started
    // with, so that one is restored.
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
  HelpPeers& Help() override { return help_; }
  KeySet KeysDown() override { return application_.KeysDown(); }
  void Beep() override { QApplication::beep(); }
  void SetClipboardText(const std::wstring& text) override {
    // With the line ends of this desktop.
    const QString offered = QString::fromStdWString(text).replace("\r\n", "\n");
    SurvivesUse([&] {
      if (offered.isEmpty()) {
        QGuiApplication::clipboard()->clear();
      } else {
        QGuiApplication::clipboard()->setText(offered);
      }
    });
  }
  std::unique_ptr<ShownMessageBox> ShowMessageBox(const MessageBoxView& view) override {
    return std::make_unique<QtMessageBox>(view, loop_);
  }

 private:
  // Outlives the application, because it also watches the application's destruction.
  std::unique_ptr<QtDisplayWatch> ownedWatch_;
  QtDisplayWatch& watch_;
  // Qt keeps references to these as long as the application lives. Window managers identify the
  // program's windows by its name.
  std::string name_ = program_invocation_short_name;
  char* arguments_[2] = {name_.data(), nullptr};
  int argumentCount_ = 1;
  const std::string localeBefore_ = std::setlocale(LC_ALL, nullptr);
  [[maybe_unused]] const bool withoutGlib_ = DisableGlib();
  [[maybe_unused]] const bool withoutForeignBus_ = DisableForeignBus();
  QtApplication application_{argumentCount_, arguments_, watch_};
  const QtResizeGuard resizeGuard_;
  QtEventLoop loop_{watch_};
  QtGraphics graphics_;
  QtWindowPeers windows_;
  QtControlPeers controls_;
  QtDialogPeers dialogs_;
  QtMenus menus_;
  QtTray tray_;
  QtHelp help_;
};

std::unique_ptr<DesktopModule> MakeDesktop() {
  auto watch = std::make_unique<QtDisplayWatch>();
  QtDesktop* desktop = nullptr;
  if (!SurvivesJoining([&] { desktop = new QtDesktop(*watch); })) {
    // Threads of the toolkit may still be reading from the connection.
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
