#include "service/event_log_indicator.h"

namespace quillgate {

void EventLogIndicator::SetTip(const std::wstring& text) {
  const CriticalSectionLock hold(lock_);
  if (text == tip_) return;
  tip_ = text;
  events_.LogEvent(text);
}

void EventLogIndicator::ShowMessage(const std::wstring& text, const std::wstring& title,
                                    BalloonIcon, int) {
  events_.LogEvent(text.empty() ? title : title + L": " + text);
}

}  // namespace quillgate
