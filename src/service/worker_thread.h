// A thread of the program's own. Made suspended; Start lets it run, Stop asks it to end. A derived
// class must call Join in its destructor, before what its Run uses goes.
#pragma once

#include <windows.h>

#include <atomic>

#include "handles/handle.h"

namespace quillgate {

class WorkerThread {
 public:
  // Throws std::runtime_error("Could not create thread.").
  WorkerThread();
  virtual ~WorkerThread() = default;
  WorkerThread(const WorkerThread&) = delete;
  WorkerThread& operator=(const WorkerThread&) = delete;

  void Start();

  // Asks the thread to end and waits for its completion mutex. The thread that constructed this
  // object owns that mutex, so there the wait is satisfied at once, whatever the thread does; Join
  // waits for the end. Whether the wait was satisfied.
  bool Stop(DWORD timeoutMilliseconds);

 protected:
  // The thread's body; its result is the thread's exit code. Nothing may be thrown.
  virtual unsigned Run() noexcept = 0;

  bool IsStopRequested() const { return stopRequested_; }

  // The body's last action.
  void SignalCompletion();

  // Asks the thread to end and waits until it has, also when it was never started.
  void Join();

 private:
  static unsigned ThreadProc(void* argument) noexcept;

  std::atomic<bool> stopRequested_{false};
  KernelHandle completionMutex_;
  // The mutex for as long as completion has not been signalled.
  std::atomic<HANDLE> completion_{nullptr};
  KernelHandle thread_;
  unsigned threadId_ = 0;
};

}  // namespace quillgate
