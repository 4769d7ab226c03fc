// The indicator that the session object is given, which outlives the tray: speaks through the tray
// while there is one, else through the event log. The session begins before it is known whether
// there is a tray; what it says until then waits. Any thread.
#pragma once

#include <functional>
#include <vector>

#include "handles/critical_section.h"
#include "session/gate_indicator.h"

namespace quillgate {

class RelayIndicator final : public GateIndicator {
 public:
  // What it speaks through where there is no tray.
  explicit RelayIndicator(GateIndicator& withoutTray) : withoutTray_(withoutTray) {}

  // When these return, nobody speaks through the one before any more, and what waited has been
  // said.
  void RelayTo(GateIndicator& target) {
    const CriticalSectionLock hold(lock_);
    target_ = &target;
    for (const auto& say : waiting_)
      say(target);
    waiting_.clear();
  }
  void RelayWithoutTray() { RelayTo(withoutTray_); }

  void SetIcon(GateIcon icon) override { Relay(&GateIndicator::SetIcon, icon); }
  void SetTip(const std::wstring& text) override { Relay(&GateIndicator::SetTip, text); }
  void Show() override { Relay(&GateIndicator::Show); }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    Relay(&GateIndicator::ShowMessage, text, title, icon, kind);
  }
  // Without a tray there is nothing to click on.
  bool Lock() override {
    const CriticalSectionLock hold(lock_);
    return target_ != nullptr && target_->Lock();
  }
  void Unlock() override {
    const CriticalSectionLock hold(lock_);
    if (target_ != nullptr) target_->Unlock();
  }

 private:
  template <class Operation, class... Arguments>
  void Relay(Operation operation, const Arguments&... arguments) {
    const CriticalSectionLock hold(lock_);
    const auto say = [operation, arguments...](GateIndicator& target) {
      (target.*operation)(arguments...);
    };
    if (target_ == nullptr) {
      waiting_.emplace_back(say);
    } else {
      say(*target_);
    }
  }

  GateIndicator& withoutTray_;
  CriticalSection lock_;
  GateIndicator* target_ = nullptr;
  std::vector<std::function<void(GateIndicator&)>> waiting_;
};

}  // namespace quillgate
