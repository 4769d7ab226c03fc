// The indicator where there is no notification area: writes to the event log. Any thread.
#pragma once

#include "handles/critical_section.h"
#include "service/event_log.h"
#include "session/gate_indicator.h"

namespace quillgate {

class EventLogIndicator final : public GateIndicator {
 public:
  explicit EventLogIndicator(EventLog& events) : events_(events) {}

  // The tip contains everything that the icon shows; a line is written when it changes.
  void SetTip(const std::wstring& text) override;
  // Writes "title: text", or the title alone when the text is empty.
  void ShowMessage(const std::wstring& text, const std::wstring& title, BalloonIcon icon,
                   int kind) override;

  // There is no icon to draw or to click on.
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
