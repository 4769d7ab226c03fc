// The memory that the process really holds, for tests that nothing may grow in.
#pragma once

#include <unistd.h>

#include <fstream>

inline long ResidentBytes() {
  std::ifstream file("/proc/self/statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return resident * ::sysconf(_SC_PAGESIZE);
}
