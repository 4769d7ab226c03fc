// A thread of the program. Created suspended; Start resumes it, Stop requests its end. A derived
// class must call Join in its destructor, before the members that its Run uses are destroyed.
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

  // Requests the end of the thread and waits for its completion mutex. The thread that constructed
  // this object owns that mutex: on that thread the wait is satisfied immediately, even while the
  // worker still runs. Join waits for the end. Returns whether the wait was satisfied.
  bool Stop(DWORD timeoutMilliseconds);

 protected:
  // The body of the thread; its result is the exit code of the thread. Must not throw.
  virtual unsigned Run() noexcept = 0;

  bool IsStopRequested() const { return stopRequested_; }

  // The last call of the body.
  void SignalCompletion();

  // Requests the end of the thread and waits for it, also when the thread was never started.
  void Join();

 private:
  static unsigned ThreadProc(void* argument) noexcept;

  std::atomic<bool> stopRequested_{false};
  KernelHandle completionMutex_;
  // The mutex until completion is signalled, then null.
  std::atomic<HANDLE> completion_{nullptr};
  KernelHandle thread_;
  unsigned threadId_ = 0;
};

}  // namespace quillgate
