// The names of the people who have an account on this machine: the password database, human
// accounts only, or what the simulated machine says. Any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct LocalAccount {
  std::wstring name;
  std::wstring fullName;
  unsigned id = 0;
};

// Nothing when the accounts cannot be read.
using AccountSource = std::function<std::optional<std::vector<LocalAccount>>()>;

std::optional<std::vector<LocalAccount>> ListAccounts();
void SetAccountSource(AccountSource source);  // empty: the password database again

}  // namespace platform
