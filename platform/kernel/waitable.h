// The objects that WaitForSingleObject waits for, and the end of a wait. Any thread.
#pragma once

#include <windef.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform/kernel/handle_table.h"

namespace platform {

// When a wait times out, on the current clock; never for INFINITE.
class Deadline {
 public:
  explicit Deadline(DWORD milliseconds);
  bool HasCome() const;
  // The time left, a day at most: the waiting thread then checks again.
  std::chrono::milliseconds Left() const;

 private:
  std::optional<std::uint64_t> due_;
};

class Waitable : public Object {
 public:
  // WAIT_OBJECT_0, WAIT_ABANDONED, WAIT_TIMEOUT or, with the last error set, WAIT_FAILED. A wait
  // that succeeds changes the object's state as Win32 documents: it acquires a mutex.
  virtual DWORD Wait(const Deadline& deadline) = 0;
};

}  // namespace platform
