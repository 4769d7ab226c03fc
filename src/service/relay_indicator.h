// The indicator of the session object, which outlives the tray: forwards to the tray while there is
// one, else to the event log. The session begins before the process knows whether there is a tray;
// calls that come earlier are queued. Any thread.
#pragma once

#include <functional>
#include <vector>

#include "handles/critical_section.h"
#include "session/gate_indicator.h"

namespace quillgate {

class RelayIndicator final : public GateIndicator {
 public:
  // `withoutTray` is the target where there is no tray.
  explicit RelayIndicator(GateIndicator& withoutTray) : withoutTray_(withoutTray) {}

  // When these return, no thread calls the previous target any more, and the queued calls have been
  // forwarded.
  void RelayTo(GateIndicator& target) {
    const CriticalSectionLock hold(lock_);
    target_ = &target;
    for (const auto& call : queued_)
      call(target);
    queued_.clear();
  }
  void RelayWithoutTray() { RelayTo(withoutTray_); }

  void SetIcon(GateIcon icon) override { Relay(&GateIndicator::SetIcon, icon); }
  void SetTip(const std::wstring& text) override { Relay(&GateIndicator::SetTip, text); }
  void Show() override { Relay(&GateIndicator::Show); }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    Relay(&GateIndicator::ShowMessage, text, title, icon, kind);
  }
  // Not queued: without a tray there is nothing to click on.
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
    const auto call = [operation, arguments...](GateIndicator& target) {
      (target.*operation)(arguments...);
    };
    if (target_ == nullptr) {
      queued_.emplace_back(call);
    } else {
      call(*target_);
    }
  }

  GateIndicator& withoutTray_;
  CriticalSection lock_;
  GateIndicator* target_ = nullptr;
  std::vector<std::function<void(GateIndicator&)>> queued_;
};

}  // namespace quillgate
