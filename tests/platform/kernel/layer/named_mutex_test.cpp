// Mutexes that processes know by name, which are files below the machine's root.
#include <windows.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr wchar_t kName[] = L"Global\\Some mutex";

class NamedMutex : public testing::Test {
 protected:
  const platform::SimulatedMachine machine_;
};

TEST_F(NamedMutex, ExistsUntilItsLastHandleIsClosed) {
  const HANDLE first = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), NO_ERROR);
  const HANDLE second = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_EQ(ErrorOf(::ReleaseMutex(second)), ERROR_NOT_OWNER);
  EXPECT_EQ(ErrorOf(::WaitForSingleObject(first, 0) != WAIT_FAILED), ERROR_NOT_SUPPORTED);
  EXPECT_TRUE(::CloseHandle(first));
  const HANDLE third = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_TRUE(::CloseHandle(second));
  EXPECT_TRUE(::CloseHandle(third));
  EXPECT_TRUE(::CloseHandle(::CreateMutexW(nullptr, FALSE, kName)));
  EXPECT_EQ(::GetLastError(), NO_ERROR);
}

TEST_F(NamedMutex, NamesDifferInCaseAndNameSpace) {
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, L"Global\\name");
  for (const wchar_t* other : {L"Global\\Name", L"Local\\name", L"name", L"Global\\name%"}) {
    const HANDLE another = ::CreateMutexW(nullptr, FALSE, other);
    EXPECT_EQ(::GetLastError(), NO_ERROR);
    EXPECT_TRUE(::CloseHandle(another));
  }
  EXPECT_TRUE(::CloseHandle(mutex));
  EXPECT_EQ(ErrorOf(::CreateMutexW(nullptr, FALSE, L"Global\\a\\b")), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(ErrorOf(::CreateMutexW(nullptr, FALSE, std::wstring(300, L'x').c_str())),
            ERROR_INVALID_NAME);
}

TEST_F(NamedMutex, ExistsForOtherProcessesUntilItsOwnIsKilled) {
  const pid_t other = ::fork();
  if (other == 0) {
    ::CreateMutexW(nullptr, TRUE, kName);
    if (::GetLastError() == NO_ERROR) ::raise(SIGSTOP);
    ::_exit(1);
  }
  int status = 0;
  ::waitpid(other, &status, WUNTRACED);
  ASSERT_TRUE(WIFSTOPPED(status)) << "it was not the first to make one";
  EXPECT_TRUE(::CloseHandle(::CreateMutexW(nullptr, FALSE, kName)));
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
  EXPECT_TRUE(::CloseHandle(::CreateMutexW(nullptr, FALSE, kName)));
  EXPECT_EQ(::GetLastError(), NO_ERROR);
}

}  // namespace
