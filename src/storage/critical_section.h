// One recursive lock of a process, and the scope that holds it.
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
  void Leave() { ::LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION section_;
};

// Holds a critical section for as long as it lives.
class CriticalSectionLock {
 public:
  explicit CriticalSectionLock(CriticalSection& section) : section_(section) { section_.Enter(); }
  ~CriticalSectionLock() { section_.Leave(); }
  CriticalSectionLock(const CriticalSectionLock&) = delete;
  CriticalSectionLock& operator=(const CriticalSectionLock&) = delete;

 private:
  CriticalSection& section_;
};

}  // namespace quillgate
