// The process's entry and its one set of objects.
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
    // Only for lack of memory: everything else is answered where it happens.
    return 1;
  }
}
