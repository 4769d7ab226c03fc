// The password database's human accounts. Any thread.
#pragma once

#include <istream>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/account/account_source.h"

namespace platform {

// The range of the users' numbers (login.defs(5): UID_MIN and UID_MAX).
struct UserIdRange {
  unsigned first = 1000;
  unsigned last = 60000;
};

// What the configuration does not tell, or tells unreadably, keeps its default.
UserIdRange ReadUserIdRange(std::istream& configuration);

// Whether an account with this shell can log on; an empty shell stands for the usual one.
bool IsLoginShell(std::string_view shell);

// In the order of the password database; nothing when it cannot be read.
std::optional<std::vector<LocalAccount>> HumanAccounts();

}  // namespace platform
