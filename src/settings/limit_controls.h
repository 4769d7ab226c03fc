// The controls of one limit on a page: a check box, and an amount and a period that can be entered
// while it is checked. Does not own the windows; cheap to construct where it is needed.
#pragma once

#include <windows.h>

#include "accounts/user.h"
#include "settings/limit_entry.h"
#include "text/message_catalogue.h"

namespace quillgate {

// The identifiers of the controls.
struct LimitFields {
  int enabled;
  int amount;
  int period;
};

class LimitControls {
 public:
  LimitControls(HWND page, const LimitFields& fields) : page_(page), fields_(fields) {}

  void LimitLength() const;
  // Fills the list of periods in the interface language; the selection stays.
  void ListPeriods(const MessageCatalogue& catalogue) const;

  void Show(const User::Limit& limit) const;
  LimitEntry Entry() const;
  // `mayChange` applies to all three controls.
  void Enable(bool mayChange) const;

  // Whether a notification means that the user has changed the limit.
  static bool IsChange(const LimitFields& fields, int control, int code);

 private:
  HWND page_;
  LimitFields fields_;
};

}  // namespace quillgate
