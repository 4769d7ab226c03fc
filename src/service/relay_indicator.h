// The indicator of the session object, which outlives the tray: forwards to the tray while there is
// one, else to the event log. The session begins before the process knows whether there is a tray;
// messages that come earlier are queued. Any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "handles/critical_section.h"
#include "session/gate_indicator.h"

namespace quillgate {

class RelayIndicator final : public GateIndicator {
 public:
  // `withoutTray` is the target where there is no tray.
  explicit RelayIndicator(GateIndicator& withoutTray) : withoutTray_(withoutTray) {}

  // When these return, no thread calls the previous target any more. A tray is shown the present
  // state, since it may come late; messages that were queued are forwarded.
  void RelayTo(GateIndicator& tray) {
    const CriticalSectionLock hold(lock_);
    BeginWith(tray);
  }
  void RelayWithoutTray() {
    const CriticalSectionLock hold(lock_);
    if (target_ == nullptr) return BeginWith(withoutTray_);
    target_ = &withoutTray_;
  }

  void SetIcon(GateIcon icon) override {
    const CriticalSectionLock hold(lock_);
    icon_ = icon;
    if (target_ != nullptr) target_->SetIcon(icon);
  }
  void SetTip(const std::wstring& text) override {
    const CriticalSectionLock hold(lock_);
    tip_ = text;
    if (target_ != nullptr) target_->SetTip(text);
  }
  void Show() override {
    const CriticalSectionLock hold(lock_);
    isShown_ = true;
    if (target_ != nullptr) target_->Show();
  }
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override {
    const CriticalSectionLock hold(lock_);
    if (target_ != nullptr) return target_->ShowMessage(text, title, icon, kind);
    queued_.emplace_back(
        [=](GateIndicator& target) { target.ShowMessage(text, title, icon, kind); });
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
  // The caller holds the lock.
  void BeginWith(GateIndicator& target) {
    target_ = &target;
    if (icon_.has_value()) target.SetIcon(*icon_);
    if (tip_.has_value()) target.SetTip(*tip_);
    if (isShown_) target.Show();
    for (const auto& message : queued_)
      message(target);
    queued_.clear();
  }

  GateIndicator& withoutTray_;
  CriticalSection lock_;
  GateIndicator* target_ = nullptr;
  std::optional<GateIcon> icon_;
  std::optional<std::wstring> tip_;
  bool isShown_ = false;
  std::vector<std::function<void(GateIndicator&)>> queued_;
};

}  // namespace quillgate
