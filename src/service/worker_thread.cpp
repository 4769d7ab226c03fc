#include "service/worker_thread.h"

#include <process.h>

#include <cstdint>
#include <stdexcept>

namespace quillgate {
namespace {

constexpr unsigned kNoThreadId = static_cast<unsigned>(-1);

}  // namespace

WorkerThread::WorkerThread() {
  thread_.Reset(reinterpret_cast<HANDLE>(
      ::_beginthreadex(nullptr, 0, ThreadProc, this, CREATE_SUSPENDED, &threadId_)));
  if (!thread_.IsValid() || threadId_ == kNoThreadId) {
    thread_.Release();
    throw std::runtime_error("Could not create thread.");
  }
  completionMutex_.Reset(::CreateMutexW(nullptr, TRUE, nullptr));
  completion_ = completionMutex_.Get();
}

void WorkerThread::Start() {
  if (thread_.IsValid()) ::ResumeThread(thread_.Get());
}

bool WorkerThread::Stop(DWORD timeoutMilliseconds) {
  stopRequested_ = true;
  const DWORD result = ::WaitForSingleObject(completion_, timeoutMilliseconds);
  return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void WorkerThread::SignalCompletion() {
  // ReleaseMutex fails, because another thread owns the mutex. The cleared handle shows the
  // completion.
  ::ReleaseMutex(completion_.exchange(nullptr));
}

void WorkerThread::Join() {
  stopRequested_ = true;
  Start();
  ::WaitForSingleObject(thread_.Get(), INFINITE);
}

unsigned WorkerThread::ThreadProc(void* argument) noexcept {
  return static_cast<WorkerThread*>(argument)->Run();
}

}  // namespace quillgate
