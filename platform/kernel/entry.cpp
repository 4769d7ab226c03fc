// main() of a program that is written to the Win32 entry point.
#include <windows.h>

#include <clocale>

#include "platform/kernel/command_line.h"

int main() {
  // Wide output of the C runtime needs a multibyte locale; ours is UTF-8 whatever the user's is.
  std::setlocale(LC_CTYPE, "C.UTF-8");
  constexpr int kShowNormal = 1;
  return ::wWinMain(::GetModuleHandleW(nullptr), nullptr, platform::CommandLineArguments(),
                    kShowNormal);
}
