// Shows the state of the gate to the user: an icon with a tip, and balloons. The session object
// calls it on the thread that switched the gate, while it holds its own lock: an implementation
// must not wait for another thread, call the session object, or throw.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

// Identifiers of the icon resources.
enum class GateIcon : WORD {
  kEnabled = 101,
  kDisabled = 102,
  kUndecided = 117,  // at start, before the gate is first switched
};

// The icon of a balloon, with the values of the notification area (NIIF_*).
enum class BalloonIcon : DWORD { kInformation = 1, kWarning = 2, kError = 3 };

class GateIndicator {
 public:
  virtual ~GateIndicator() = default;

  virtual void SetIcon(GateIcon icon) = 0;
  virtual void SetTip(const std::wstring& text) = 0;
  // Makes the icon visible; it is hidden initially.
  virtual void Show() = 0;

  // Shows a balloon. `kind` distinguishes messages; this program always passes 0.
  virtual void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                           int kind) = 0;

  // While locked, clicks on the icon are ignored: used around a modal dialog. A flag, not a count:
  // Lock returns whether the flag was set already, and then the caller must not clear it.
  virtual bool Lock() = 0;
  virtual void Unlock() = 0;
};

// Locks the indicator during its lifetime. An indicator that was locked before stays locked.
class IndicatorLock {
 public:
  explicit IndicatorLock(GateIndicator& indicator)
      : indicator_(indicator), wasLocked_(indicator.Lock()) {}
  ~IndicatorLock() {
    if (!wasLocked_) indicator_.Unlock();
  }
  IndicatorLock(const IndicatorLock&) = delete;
  IndicatorLock& operator=(const IndicatorLock&) = delete;

 private:
  GateIndicator& indicator_;
  const bool wasLocked_;
};

}  // namespace quillgate
