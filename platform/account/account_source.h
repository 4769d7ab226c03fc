// The user accounts of this machine: those of people in the name service, or the simulated
// machine's. Any thread.
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
void SetAccountSource(AccountSource source);  // empty: the name service again

}  // namespace platform
