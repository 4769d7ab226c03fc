#include "platform/qt/qt_desktop_loss.h"

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QString>
#include <QThread>
#include <atomic>
#include <csetjmp>
#include <csignal>
#include <cstdint>

#include "platform/qt/qt_x11.h"

namespace platform {
namespace {

QtMessageHandler previousHandler = nullptr;

// SurvivesJoining returns to this point when joining failed. Not by an exception: neither the calls
// through which Qt ends the process nor the C code below them let one pass.
sigjmp_buf joinFailure;
std::atomic<bool> isJoining = false;
pthread_t joiningThread;

// The signal that interrupts a connect waiting for the server. Ignored by default, so a late one
// has no effect.
constexpr int kInterruption = SIGURG;

// Thrown out of SurvivesUse's work when the desktop is lost.
class DesktopBroken {};

// The depth of nested SurvivesUse calls. Window thread.
int uses = 0;
bool isLost = false;

void LeaveJoining() {
  if (isJoining && ::pthread_equal(joiningThread, ::pthread_self()) != 0)
    siglongjmp(joinFailure, 1);
}

// The end of the null page. Qt dereferences some null replies of a broken connection without a
// check.
constexpr std::uintptr_t kNullPageEnd = 4'096;
struct sigaction previousFaultAction {};

void OnFault(int signal, siginfo_t* fault, void* /*context*/) {
  if (reinterpret_cast<std::uintptr_t>(fault->si_addr) < kNullPageEnd) LeaveJoining();
  // The faulting instruction runs again, now with the previous handler.
  ::sigaction(signal, &previousFaultAction, nullptr);
}

// Handles SIGSEGV while Qt joins the desktop.
class FaultWatch {
 public:
  FaultWatch() {
    struct sigaction action {};
    action.sa_sigaction = OnFault;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGSEGV, &action, &previousFaultAction);
  }
  ~FaultWatch() { ::sigaction(SIGSEGV, &previousFaultAction, nullptr); }
  FaultWatch(const FaultWatch&) = delete;
  FaultWatch& operator=(const FaultWatch&) = delete;
};

void AllowInterruption() {
  struct sigaction action {};
  action.sa_handler = [](int) {};
  ::sigaction(kInterruption, &action, nullptr);
  sigset_t set;
  ::sigemptyset(&set);
  ::sigaddset(&set, kInterruption);
  ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

// The messages of the X11 and Wayland platform plugins directly before they end the process.
bool ReportsEnd(const QString& text) {
  return text.startsWith("The X11 connection broke (") ||
         text.startsWith("The Wayland connection broke");
}

// The message of the X11 plugin for an error that Xlib reports.
bool ReportsXlibError(const QString& text) {
  return text.startsWith("The X11 connection broke:");
}

bool IsOnWindowThread() {
  const QCoreApplication* application = QCoreApplication::instance();
  return application != nullptr && QThread::currentThread() == application->thread();
}

void LeaveUse() {
  if (IsOnWindowThread() && uses > 0) throw DesktopBroken();
}

void OnMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  previousHandler(type, context, text);
  if (type == QtFatalMsg || ReportsEnd(text) || ReportsXlibError(text)) LeaveJoining();
  if (ReportsEnd(text)) LeaveUse();
}

void WatchMessages() {
  const QtMessageHandler before = qInstallMessageHandler(OnMessage);
  if (before != OnMessage) previousHandler = before;
}

// Null when Xlib is not there.
void* XlibFunction(const char* name) {
  void* library = ::dlopen("libX11.so.6", RTLD_NOW);
  return library != nullptr ? ::dlsym(library, name) : nullptr;
}

// Qt opens the display through Xlib, which ends the process after this handler unless an exit
// handler is set. Qt later installs an error handler of its own that writes a message and ends the
// process, too.
int OnXlibError(void* /*display*/) {
  LeaveJoining();
  return 0;
}

// Called instead of Xlib's exit. It must not return into Xlib. Inside SurvivesUse it throws;
// elsewhere there is nowhere to return to, so the thread stops here and the other threads go on.
void OnXlibExit(void* /*display*/, void* /*data*/) {
  LeaveUse();
  for (;;)
    ::pause();
}

void WatchXlib() {
  using Handler = int (*)(void*);
  void* setHandler = XlibFunction("XSetIOErrorHandler");
  if (setHandler != nullptr) reinterpret_cast<Handler (*)(Handler)>(setHandler)(OnXlibError);
}

}  // namespace

bool SurvivesJoining(const std::function<void()>& work) {
  WatchMessages();
  WatchXlib();
  AllowInterruption();
  const FaultWatch faults;
  joiningThread = ::pthread_self();
  if (sigsetjmp(joinFailure, 1) != 0) {
    isJoining = false;
    return false;
  }
  isJoining = true;
  work();
  isJoining = false;
  return true;
}

void InterruptJoining() {
  if (isJoining) ::pthread_kill(joiningThread, kInterruption);
}

void TakeOverXlibErrors() {
  using Handler = void (*)(void* display, void* data);
  const auto* x11 = X11Application();
  if (x11 == nullptr) return;
  void* setHandler = XlibFunction("XSetIOErrorExitHandler");
  if (setHandler == nullptr) return;
  WatchXlib();
  reinterpret_cast<void (*)(void*, Handler, void*)>(setHandler)(x11->display(), OnXlibExit,
                                                                nullptr);
}

bool SurvivesUse(const std::function<void()>& work) {
  if (isLost) return false;
  const int before = uses++;
  try {
    work();
  } catch (const DesktopBroken&) {
    isLost = true;
  }
  uses = before;
  return !isLost;
}

}  // namespace platform
