// The accounts of people in the password database. Any thread.
#pragma once

#include <istream>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/account/account_source.h"

namespace platform {

// The range of the numbers of people's accounts (UID_MIN and UID_MAX in login.defs(5)).
struct UserIdRange {
  unsigned first = 1000;
  unsigned last = 60000;
};

// Reads the range from login.defs. A missing or malformed number keeps its default.
UserIdRange ReadUserIdRange(std::istream& configuration);

// Whether an account with this shell can log on; an empty shell is the default one.
bool IsLoginShell(std::string_view shell);

// The accounts in the range with a login shell, in the order of the password database; nothing when
// it cannot be read.
std::optional<std::vector<LocalAccount>> HumanAccounts();

}  // namespace platform
