// Who may change what on the users page. Plain values; pure.
#pragma once

#include "accounts/logon_system.h"
#include "text/message_ids.h"

namespace quillgate {

// Whom the page shows, and to whom.
struct ShownUser {
  LogonSystem system = LogonSystem::kNone;
  bool isForAdministrator = false;  // the sheet was opened by one
  bool isOverride = false;          // the record of the override password
  bool isLastAdministrator = false;
  bool isAny = true;  // false: the list is empty
};

struct UserRights {
  bool mayAdd = false;
  bool mayRemove = false;
  bool mayChangePassword = false;
  bool hasPassword = false;  // the group is not disabled as a whole
  bool mayChangeRules = false;
  bool mayChangeAdministrator = false;
  MessageId passwordHint = 0;
  MessageId hoursHint = 0;

  bool operator==(const UserRights&) const = default;
};

UserRights RightsOver(const ShownUser& shown);

// A new user is an administrator only where people log on by passwords and nobody else is one.
bool StartsAsAdministrator(LogonSystem system, bool hasAdministrator);

}  // namespace quillgate
