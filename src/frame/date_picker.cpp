#include "frame/date_picker.h"

namespace quillgate {

void DatePicker::SetDate(const SYSTEMTIME& date) const {
  Send(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&date));
}

std::optional<SYSTEMTIME> DatePicker::Date() const {
  SYSTEMTIME date{};
  if (Send(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date)) != GDT_VALID) return {};
  return date;
}

void DatePicker::SetBounds(const std::optional<SYSTEMTIME>& earliest,
                           const std::optional<SYSTEMTIME>& latest) const {
  const SYSTEMTIME bounds[] = {earliest.value_or(SYSTEMTIME{}), latest.value_or(SYSTEMTIME{})};
  const WPARAM given = (earliest ? GDTR_MIN : 0u) | (latest ? GDTR_MAX : 0u);
  Send(DTM_SETRANGE, given, reinterpret_cast<LPARAM>(bounds));
}

}  // namespace quillgate
