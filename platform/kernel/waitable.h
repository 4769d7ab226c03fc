// What WaitForSingleObject waits for: an object that becomes signalled. Any thread.
#pragma once

#include <windef.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>

#include "platform/kernel/handle_table.h"

namespace platform {

// A point on the current clock until which a wait lasts; INFINITE never comes.
class Deadline {
 public:
  explicit Deadline(DWORD milliseconds);
  bool HasCome() const;
  // What is left, a day at most: a wait may always return early and look again.
  std::chrono::milliseconds Left() const;

 private:
  std::optional<std::uint64_t> due_;
};

class Waitable : public Object {
 public:
  // WAIT_OBJECT_0, WAIT_ABANDONED, WAIT_TIMEOUT or, with the last error set, WAIT_FAILED. Takes
  // what a satisfied wait takes.
  virtual DWORD Wait(const Deadline& deadline) = 0;
};

}  // namespace platform
