#include "no_wait_vfs.h"

#include <sqlite3.h>

namespace quillgate::engine {

namespace {

constexpr const char* kName = "no-wait";

int DoNotSleep(sqlite3_vfs* /*vfs*/, int microseconds) noexcept {
  return microseconds;
}

bool Register() {
  const sqlite3_vfs* system = sqlite3_vfs_find(nullptr);
  if (system == nullptr) return false;
  static sqlite3_vfs vfs = *system;
  vfs.zName = kName;
  vfs.xSleep = DoNotSleep;
  constexpr int kNotTheDefault = 0;
  return sqlite3_vfs_register(&vfs, kNotTheDefault) == SQLITE_OK;
}

}  // namespace

const char* NoWaitVfs() {
  static const bool registered = Register();
  return registered ? kName : nullptr;
}

}  // namespace quillgate::engine
