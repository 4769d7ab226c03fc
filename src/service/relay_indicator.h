// The indicator that the session object is given, which outlives the tray: speaks through the tray
// while there is one, else through the event log. Any thread.
#pragma once

#include "session/gate_indicator.h"
#include "storage/critical_section.h"

namespace quillgate {

class RelayIndicator final : public GateIndicator {
 public:
  // What it speaks through at first.
  explicit RelayIndicator(GateIndicator& first) : first_(first) {}

  // When these return, nobody speaks through the one before any more.
  void RelayTo(GateIndicator& target) {
    const CriticalSectionLock hold(lock_);
    target_ = &target;
  }
  void RelayToFirst() { RelayTo(first_); }

  void SetIcon(GateIcon icon) override { Relay(&GateIndicator::SetIcon, icon); }
  void SetTip(const std::wstring& text) override { Relay(&GateIndicator::SetTip, text); }
  void Show() override { Relay(&GateIndicator::Show); }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    Relay(&GateIndicator::ShowMessage, text, title, icon, kind);
  }
  void Lock() override { Relay(&GateIndicator::Lock); }
  void Unlock() override { Relay(&GateIndicator::Unlock); }

 private:
  template <class Operation, class... Arguments>
  void Relay(Operation operation, const Arguments&... arguments) {
    const CriticalSectionLock hold(lock_);
    (target_->*operation)(arguments...);
  }

  GateIndicator& first_;
  CriticalSection lock_;
  GateIndicator* target_ = &first_;
};

}  // namespace quillgate
