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

QtMessageHandler handlerBefore = nullptr;

// Where joining goes on when it has failed. Not by an exception: the calls through which Qt ends
// the process let none pass, nor do those of C below it.
sigjmp_buf wayBack;
std::atomic<bool> isJoining = false;
pthread_t joiningThread;

// Interrupts a connect that waits for the server. Ignored by default, so one that comes late does
// nothing.
constexpr int kInterruption = SIGURG;

// Thrown out of a use of Qt.
class DesktopBroken {};

// Uses under way, one inside the other. Window thread.
int uses = 0;
bool isLost = false;

void LeaveJoining() {
  if (isJoining && ::pthread_equal(joiningThread, ::pthread_self()) != 0) siglongjmp(wayBack, 1);
}

// Answers that never came, of which Qt follows some unseen, lie below.
constexpr std::uintptr_t kEndOfNothing = 4'096;
struct sigaction faultsBefore {};

void OnFault(int signal, siginfo_t* fault, void* /*context*/) {
  if (reinterpret_cast<std::uintptr_t>(fault->si_addr) < kEndOfNothing) LeaveJoining();
  // It comes again at once, to whoever is told of it then.
  ::sigaction(signal, &faultsBefore, nullptr);
}

// For the time of joining.
class FaultWatch {
 public:
  FaultWatch() {
    struct sigaction action {};
    action.sa_sigaction = OnFault;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGSEGV, &action, &faultsBefore);
  }
  ~FaultWatch() { ::sigaction(SIGSEGV, &faultsBefore, nullptr); }
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

// As the platform plugins of X11 and Wayland word it, directly before they end the process.
bool ReportsEnd(const QString& text) {
  return text.startsWith("The X11 connection broke (") ||
         text.startsWith("The Wayland connection broke");
}

// As that of X11 words what Xlib has found.
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
  handlerBefore(type, context, text);
  if (type == QtFatalMsg || ReportsEnd(text) || ReportsXlibError(text)) LeaveJoining();
  if (ReportsEnd(text)) LeaveUse();
}

void WatchMessages() {
  const QtMessageHandler before = qInstallMessageHandler(OnMessage);
  if (before != OnMessage) handlerBefore = before;
}

// Null without Xlib.
void* XlibFunction(const char* name) {
  void* library = ::dlopen("libX11.so.6", RTLD_NOW);
  return library != nullptr ? ::dlsym(library, name) : nullptr;
}

// Xlib, through which Qt opens the display, then goes on to end the process, unless it has an exit
// handler. Qt soon has a handler of its own, which writes a message and ends it, too.
int OnXlibError(void* /*display*/) {
  LeaveJoining();
  return 0;
}

// Instead of Xlib's ending the process. No call of Xlib can be gone on with after it, and outside
// of event handling there is nowhere else to go: the thread stays here, so that what other threads
// do goes on.
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
  if (sigsetjmp(wayBack, 1) != 0) {
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
