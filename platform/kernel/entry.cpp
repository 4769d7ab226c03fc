// main() of a program whose entry point is wWinMain.
#include <windows.h>

#include <clocale>

#include "platform/kernel/command_line.h"

int main() {
  // The C runtime's wide output needs a multibyte locale: UTF-8, whatever the user's locale is.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  constexpr int kShowNormal = 1;
  return ::wWinMain(::GetModuleHandleW(nullptr), nullptr, platform::CommandLineArguments(),
                    kShowNormal);
}
