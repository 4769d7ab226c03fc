// What shows people the state of the gate: an icon with a tip, and balloons. The session object
// speaks through it from whichever thread switched the gate, while it holds its own lock: an
// implementation must not wait for another thread, nor call the session object back, nor throw.
#pragma once

#include <windows.h>

#include <string>

namespace quillgate {

// The number of the icon's resource.
enum class GateIcon : WORD {
  kEnabled = 101,
  kDisabled = 102,
  kUndecided = 117,  // at start, before the gate is first switched
};

// The icon of a balloon, as the notification area numbers them.
enum class BalloonIcon : DWORD { kInformation = 1, kWarning = 2, kError = 3 };

class GateIndicator {
 public:
  virtual ~GateIndicator() = default;

  virtual void SetIcon(GateIcon icon) = 0;
  virtual void SetTip(const std::wstring& text) = 0;
  // Makes the icon visible; it is hidden at first.
  virtual void Show() = 0;

  // A balloon. The kind tells one message from another and is 0 for all of this program's.
  virtual void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                           int kind) = 0;

  // While locked, clicks on the icon are ignored: around a modal dialog. One flag, not a count:
  // Lock answers whether it was set already, and then it is somebody else's to clear.
  virtual bool Lock() = 0;
  virtual void Unlock() = 0;
};

// The indicator is locked for as long as this lives, or longer if it was before.
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
