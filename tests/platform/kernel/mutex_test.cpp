#include <windows.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "platform/testing/simulated_machine.h"

namespace {

constexpr wchar_t kName[] = L"Global\\Some mutex";

// What another thread gets that waits for the mutex without patience.
DWORD WaitElsewhere(HANDLE mutex, DWORD milliseconds = 0) {
  DWORD result = WAIT_FAILED;
  std::thread([&] {
    result = ::WaitForSingleObject(mutex, milliseconds);
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) ::ReleaseMutex(mutex);
  }).join();
  return result;
}

TEST(Mutex, IsFreeAfterAsManyReleasesAsWaits) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_TIMEOUT);
  EXPECT_TRUE(::ReleaseMutex(mutex));
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_OBJECT_0);
  EXPECT_FALSE(::ReleaseMutex(mutex));
  EXPECT_EQ(::GetLastError(), ERROR_NOT_OWNER);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(Mutex, AStrangerCannotReleaseIt) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  std::thread([&] {
    EXPECT_FALSE(::ReleaseMutex(mutex));
    EXPECT_EQ(::GetLastError(), ERROR_NOT_OWNER);
  }).join();
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_TIMEOUT);
  EXPECT_TRUE(::CloseHandle(mutex));
  EXPECT_FALSE(::ReleaseMutex(mutex));
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(Mutex, AWaiterGetsItWhenItIsReleased) {
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, nullptr);
  std::jthread waiter([&] {
    EXPECT_EQ(::WaitForSingleObject(mutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(::ReleaseMutex(mutex));
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_TRUE(::ReleaseMutex(mutex));
  waiter.join();
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(Mutex, TheNextOwnerIsToldOnceThatTheThreadThatHadItEnded) {
  const platform::SimulatedMachine machine;
  for (const wchar_t* name : {static_cast<const wchar_t*>(nullptr), kName}) {
    const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, name);
    std::thread([&] { EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0); }).join();
    EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
    EXPECT_TRUE(::ReleaseMutex(mutex));
    EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(::CloseHandle(mutex));
  }
}

TEST(NamedMutex, ASecondHandleIsTheSameMutexAndIsNotOwnedAtOnce) {
  const platform::SimulatedMachine machine;
  const HANDLE first = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::GetLastError(), NO_ERROR);
  const HANDLE second = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_EQ(WaitElsewhere(first), WAIT_OBJECT_0);
  EXPECT_EQ(::WaitForSingleObject(second, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitElsewhere(first), WAIT_TIMEOUT);
  EXPECT_TRUE(::CloseHandle(first));
  EXPECT_TRUE(::CloseHandle(second));
}

TEST(NamedMutex, IsGoneWithItsLastHandleEvenWhenItIsOwned) {
  const platform::SimulatedMachine machine;
  EXPECT_TRUE(::CloseHandle(::CreateMutexW(nullptr, TRUE, kName)));
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::GetLastError(), NO_ERROR);
  EXPECT_EQ(WaitElsewhere(mutex), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(NamedMutex, NamesDifferInCaseAndNameSpace) {
  const platform::SimulatedMachine machine;
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, L"Global\\name");
  for (const wchar_t* other : {L"Global\\Name", L"Local\\name", L"name", L"Global\\name%"}) {
    const HANDLE another = ::CreateMutexW(nullptr, FALSE, other);
    EXPECT_EQ(::GetLastError(), NO_ERROR);
    EXPECT_TRUE(::CloseHandle(another));
  }
  EXPECT_TRUE(::CloseHandle(mutex));
  EXPECT_EQ(::CreateMutexW(nullptr, FALSE, L"Global\\a\\b"), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(::CreateMutexW(nullptr, FALSE, std::wstring(300, L'x').c_str()), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_INVALID_NAME);
}

// Another process that makes the mutex, owned if asked, and lives until it is told to end.
class OtherProcess {
 public:
  explicit OtherProcess(bool owner) {
    EXPECT_EQ(::pipe2(toChild_, O_CLOEXEC), 0);
    EXPECT_EQ(::pipe2(fromChild_, O_CLOEXEC), 0);
    child_ = ::fork();
    if (child_ == 0) Live(owner);
    existed_ = Receive();
  }
  ~OtherProcess() {
    if (child_ > 0) Kill();
    for (const int each : {toChild_[0], toChild_[1], fromChild_[0], fromChild_[1]})
      ::close(each);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  bool MutexExisted() const { return existed_ == 'e'; }
  void Kill() {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = 0;
  }
  void LetGo() {
    EXPECT_EQ(::write(toChild_[1], "g", 1), 1);
    Receive();
  }

 private:
  [[noreturn]] void Live(bool owner) {
    const HANDLE mutex = ::CreateMutexW(nullptr, owner, kName);
    Send(::GetLastError() == ERROR_ALREADY_EXISTS ? 'e' : 'n');
    char order = 0;
    while (::read(toChild_[0], &order, 1) == 1) {
      ::ReleaseMutex(mutex);
      Send('d');
    }
    ::_exit(0);
  }
  void Send(char letter) { EXPECT_EQ(::write(fromChild_[1], &letter, 1), 1); }
  char Receive() {
    char letter = 0;
    EXPECT_EQ(::read(fromChild_[0], &letter, 1), 1);
    return letter;
  }

  int toChild_[2] = {};
  int fromChild_[2] = {};
  pid_t child_ = 0;
  char existed_ = 0;
};

TEST(NamedMutex, IsOneMutexForSeveralProcesses) {
  const platform::SimulatedMachine machine;
  OtherProcess other(true);
  EXPECT_FALSE(other.MutexExisted());
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
  other.LetGo();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(NamedMutex, AKilledOwnerLeavesItAbandoned) {
  const platform::SimulatedMachine machine;
  OtherProcess other(true);
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
  other.Kill();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST(NamedMutex, AKilledProcessLeavesNoTraceForTheNextMaker) {
  const platform::SimulatedMachine machine;
  { OtherProcess(true).Kill(); }
  const OtherProcess next(false);
  EXPECT_FALSE(next.MutexExisted());
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

}  // namespace
