// Tries to connect to the desktop that the environment names. Standard input is a socket: it
// receives one byte when the connection succeeded, and the program ends when the other end closes
// the socket. Qt's messages about a failure go to standard error.
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

namespace {

// A display server that does not reply in this time counts as absent.
constexpr unsigned kTimeoutSeconds = 5;

void FailOnFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  if (type != QtFatalMsg) return;
  std::fprintf(stderr, "%s\n", qPrintable(text));
  ::_exit(EXIT_FAILURE);
}

}  // namespace

int main(int argc, char* argv[]) {
  ::alarm(kTimeoutSeconds);
  qInstallMessageHandler(FailOnFatal);
  const QApplication application(argc, argv);
  char word = 1;
  if (::write(STDIN_FILENO, &word, 1) != 1) ::_exit(EXIT_FAILURE);
  [[maybe_unused]] const ssize_t atEnd = ::read(STDIN_FILENO, &word, 1);
  ::_exit(EXIT_SUCCESS);
}
