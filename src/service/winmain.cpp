// The entry point of the process, which owns the process objects.
#include <windows.h>

#include <exception>

#include "service/command_line.h"
#include "service/process_entry.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  try {
    quillgate::ProcessObjects objects;
    quillgate::ServiceModule service(objects);
    return quillgate::RunProcess(service, objects, quillgate::CommandLineWords());
  } catch (const std::exception&) {
    // Out of memory: all other exceptions are handled where they are thrown.
    return 1;
  }
}
