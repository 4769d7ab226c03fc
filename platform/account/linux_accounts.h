// The accounts of people in the name service: local ones, and those of directories as far as they
// can be listed. Any thread.
#pragma once

#include <istream>
#include <optional>
#include <string>
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

// The name without a domain, which directories put before a backslash or after "@".
std::wstring AccountName(std::string_view name);

// The name, without a domain, of the account with that number; empty when there is none.
std::wstring NameOfAccount(unsigned number);

// The accounts in the range, each name once, in the order of the name service; nothing when it
// lists no account at all. Neither the shell nor a locked password matters: people log on by other
// means as well.
std::optional<std::vector<LocalAccount>> HumanAccounts();

}  // namespace platform
