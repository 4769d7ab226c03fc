// Tries to reach the desktop that the environment names. Standard input is a socket: it gets one
// byte when that worked, and the program ends when the other side closes it. What Qt has to say
// about a failure goes to standard error.
#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

namespace {

// A display server that does not answer counts as none.
constexpr unsigned kPatienceSeconds = 5;

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
  char word = 1;
  if (::write(STDIN_FILENO, &word, 1) != 1) ::_exit(EXIT_FAILURE);
  [[maybe_unused]] const ssize_t atEnd = ::read(STDIN_FILENO, &word, 1);
  ::_exit(EXIT_SUCCESS);
}
