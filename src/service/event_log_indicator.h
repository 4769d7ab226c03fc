// Shows the state of the gate where there is no notification area: in the event log. Any thread.
#pragma once

#include "handles/critical_section.h"
#include "service/event_log.h"
#include "session/gate_indicator.h"

namespace quillgate {

class EventLogIndicator final : public GateIndicator {
 public:
  explicit EventLogIndicator(EventLog& events) : events_(events) {}

  // The tip tells all that the icon does; a line is written when it changes.
  void SetTip(const std::wstring& text) override;
  // "title: text", or the title alone.
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override;

  // Nothing is drawn and nothing can be clicked.
  void SetIcon(GateIcon) override {}
  void Show() override {}
  bool Lock() override { return false; }
  void Unlock() override {}

 private:
  EventLog& events_;
  CriticalSection lock_;
  std::wstring tip_;
};

}  // namespace quillgate
