#include "accounts/windows_users.h"

#include <gtest/gtest.h>

#include "platform/testing/simulated_machine.h"

namespace quillgate {
namespace {

TEST(WindowsUsers, MoreAccountsThanOneBatchHoldsAreAllListedOnceUnlessTheyCannotBeRead) {
  platform::SimulatedMachine machine;
  for (const unsigned count : {0u, 1u, 100u, 101u, 250u}) {
    std::vector<platform::LocalAccount> accounts;
    std::vector<std::wstring> expected = {L"before"};
    for (unsigned i = 0; i < count; ++i) {
      // In the order in which the system sorts them.
      accounts.push_back({L"user" + std::to_wstring(1000 + i), L"", 1000 + i});
      expected.push_back(accounts.back().name);
    }
    machine.SetAccounts(accounts);
    std::vector<std::wstring> names = {L"before"};
    EXPECT_TRUE(GetWindowsUserList(names)) << count;
    EXPECT_EQ(names, expected) << count;
  }
  machine.SetAccounts(std::nullopt);
  std::vector<std::wstring> names;
  EXPECT_FALSE(GetWindowsUserList(names));
  EXPECT_TRUE(names.empty());
}

}  // namespace
}  // namespace quillgate
