// A recursive lock within the process, and the scope objects that hold it.
#pragma once

#include <windows.h>

namespace quillgate {

class CriticalSection {
 public:
  CriticalSection() { ::InitializeCriticalSection(&section_); }
  ~CriticalSection() { ::DeleteCriticalSection(&section_); }
  CriticalSection(const CriticalSection&) = delete;
  CriticalSection& operator=(const CriticalSection&) = delete;

  void Enter() { ::EnterCriticalSection(&section_); }
  // False when another thread still holds the lock after `milliseconds`. Yields between attempts
  // instead of sleeping: the lock is held for either microseconds or seconds.
  bool TryEnter(DWORD milliseconds) {
    const DWORD start = ::GetTickCount();
    while (!::TryEnterCriticalSection(&section_)) {
      if (::GetTickCount() - start >= milliseconds) return false;
      ::Sleep(0);
    }
    return true;
  }
  void Leave() { ::LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

// Holds a critical section for the lifetime of the object.
class CriticalSectionLock {
 public:
  explicit CriticalSectionLock(CriticalSection& section) : section_(section) { section_.Enter(); }
  ~CriticalSectionLock() { section_.Leave(); }
  CriticalSectionLock(const CriticalSectionLock&) = delete;
  CriticalSectionLock& operator=(const CriticalSectionLock&) = delete;

 private:
  CriticalSection& section_;
};

// As CriticalSectionLock, for callers that must not block: when another thread holds the section
// for longer than `milliseconds`, IsHeld is false.
class TimedCriticalSectionLock {
 public:
  TimedCriticalSectionLock(CriticalSection& section, DWORD milliseconds)
      : section_(section), held_(section.TryEnter(milliseconds)) {}
  ~TimedCriticalSectionLock() {
    if (held_) section_.Leave();
  }
  TimedCriticalSectionLock(const TimedCriticalSectionLock&) = delete;
  TimedCriticalSectionLock& operator=(const TimedCriticalSectionLock&) = delete;

  bool IsHeld() const { return held_; }

 private:
  CriticalSection& section_;
  const bool held_;
};

}  // namespace quillgate
