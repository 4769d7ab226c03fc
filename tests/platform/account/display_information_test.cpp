#include <windows.h>

#include <gmock/gmock.h>

#include <lm.h>

#include <string>
#include <tuple>
#include <vector>

#include "own_namespaces.h"
#include "platform/testing/simulated_machine.h"

namespace {

using testing::ElementsAre;

using Account = std::tuple<std::wstring, std::wstring, DWORD>;  // name, full name, identifier

struct Batch {
  NET_API_STATUS status = 0;
  std::vector<Account> accounts;
  DWORD next = 0;
};

Batch Query(DWORD index, DWORD entries, DWORD bytes = MAX_PREFERRED_LENGTH, DWORD level = 1,
            LPCWSTR server = nullptr) {
  Batch batch;
  DWORD count = 99;
  PVOID buffer = &batch;
  batch.status =
      ::NetQueryDisplayInformation(server, level, index, entries, bytes, &count, &buffer);
  const auto* const users = static_cast<const NET_DISPLAY_USER*>(buffer);
  for (DWORD i = 0; i < count; ++i) {
    batch.accounts.emplace_back(users[i].usri1_name, users[i].usri1_full_name,
                                users[i].usri1_user_id);
    batch.next = users[i].usri1_next_index;
  }
  EXPECT_EQ(buffer == nullptr, count == 0);
  EXPECT_EQ(::NetApiBufferFree(buffer), NERR_Success);
  return batch;
}

class DisplayInformation : public testing::Test {
 protected:
  void MakeAccounts(unsigned count) {
    std::vector<platform::LocalAccount> accounts;
    for (unsigned i = 0; i < count; ++i)
      accounts.push_back({L"user" + std::to_wstring(i), L"Name \u00e5", 1000 + i});
    machine_.SetAccounts(std::move(accounts));
  }

  platform::SimulatedMachine machine_;
};

TEST_F(DisplayInformation, ResumingAtTheLastEntrysIndexSkipsAndRepeatsNobody) {
  MakeAccounts(250);
  std::vector<Account> found;
  std::vector<std::size_t> sizes;
  DWORD index = 0;
  NET_API_STATUS status = ERROR_MORE_DATA;
  while (status == ERROR_MORE_DATA && sizes.size() < 10) {
    const Batch batch = Query(index, 100);
    status = batch.status;
    sizes.push_back(batch.accounts.size());
    found.insert(found.end(), batch.accounts.begin(), batch.accounts.end());
    index = batch.next;
  }
  EXPECT_EQ(status, ERROR_SUCCESS);
  EXPECT_THAT(sizes, ElementsAre(100, 100, 50));
  ASSERT_EQ(found.size(), 250u);
  for (unsigned i = 0; i < 250; ++i)
    EXPECT_EQ(found[i], Account(L"user" + std::to_wstring(i), L"Name \u00e5", 1000 + i));
}

TEST_F(DisplayInformation, ABufferLimitMakesBatchesSmallerButNeverEmpty) {
  MakeAccounts(3);
  const Batch batch = Query(1, 100, 1);
  EXPECT_EQ(batch.status, ERROR_MORE_DATA);
  EXPECT_THAT(batch.accounts, ElementsAre(Account(L"user1", L"Name \u00e5", 1001)));
  EXPECT_EQ(batch.next, 2u);
}

TEST_F(DisplayInformation, AFullLastBatchNoAccountsAndAnIndexPastTheEndAreTheEnd) {
  MakeAccounts(100);
  EXPECT_EQ(Query(0, 100).status, ERROR_SUCCESS);
  MakeAccounts(0);
  EXPECT_EQ(Query(0, 100).status, ERROR_SUCCESS);
  MakeAccounts(2);
  const Batch batch = Query(7, 100);
  EXPECT_EQ(batch.status, ERROR_SUCCESS);
  EXPECT_THAT(batch.accounts, testing::IsEmpty());
}

TEST_F(DisplayInformation, OtherLevelsOtherServersAndUnreadableAccountsFail) {
  MakeAccounts(2);
  EXPECT_EQ(Query(0, 100, MAX_PREFERRED_LENGTH, 2).status, ERROR_INVALID_LEVEL);
  EXPECT_EQ(Query(0, 100, MAX_PREFERRED_LENGTH, 1, L"\\\\other").status, ERROR_BAD_NETPATH);
  machine_.SetAccounts(std::nullopt);
  EXPECT_EQ(Query(0, 100).status, ERROR_ACCESS_DENIED);
}

TEST(PasswordDatabase, OnlyPeopleAreListedEachOnceAndWithoutTheirDomain) {
  const std::string reason = own_namespaces::Enter();
  if (!reason.empty()) GTEST_SKIP() << reason;
  ASSERT_TRUE(
      own_namespaces::CoverFile("/etc/passwd",
                                "root:x:0:0:root:/root:/bin/bash\n"
                                "anna:x:500:500:Anna \xC3\x85str\xC3\xB6m,room 1:/:/bin/sh\n"
                                "daemon:x:499:499::/:/bin/sh\n"
                                "ftp:x:501:501::/:/usr/sbin/nologin\n"
                                "EXAMPLE\\off:x:502:502::/:/bin/false\n"
                                "anna@example.org:x:503:503::/:/bin/sh\n"
                                "bo:x:600:600:Bo &:/:\n"
                                "nobody:x:601:601::/:/bin/sh\n"));
  ASSERT_TRUE(
      own_namespaces::CoverFile("/etc/login.defs", "# UID_MAX 7\nUID_MIN\t\t 500\nUID_MAX 600\n"));
  const Batch batch = Query(0, 100);
  EXPECT_EQ(batch.status, ERROR_SUCCESS);
  EXPECT_THAT(batch.accounts, ElementsAre(Account(L"anna", L"Anna \u00c5str\u00f6m", 500),
                                          Account(L"ftp", L"", 501), Account(L"off", L"", 502),
                                          Account(L"bo", L"Bo bo", 600)));
}

}  // namespace
