// Ends with 0 when Qt reaches the desktop that the environment names, and otherwise with what Qt
// has to say about it on standard error.
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

namespace {

// A display server that does not answer counts as none.
constexpr unsigned kPatienceSeconds = 10;

void FailOnFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "%s\n", qPrintable(text));
  ::_exit(EXIT_FAILURE);
}

}  // namespace

int main(int argc, char* argv[]) {
  ::alarm(kPatienceSeconds);
  qInstallMessageHandler(FailOnFatal);
  const QApplication application(argc, argv);
  ::_exit(EXIT_SUCCESS);
}
