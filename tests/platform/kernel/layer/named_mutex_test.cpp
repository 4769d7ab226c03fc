// Mutexes that processes share by name, which are files below the machine's root.
#include <windows.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <thread>

#include "platform/kit/failing_call.h"
#include "platform/testing/simulated_machine.h"

namespace {

constexpr wchar_t kName[] = L"Global\\Some mutex";

class NamedMutex : public testing::Test {
 protected:
  const platform::SimulatedMachine machine_;
};

TEST_F(NamedMutex, ASecondHandleIsTheSameMutexAndIsNotOwnedAtOnce) {
  const HANDLE first = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::GetLastError(), NO_ERROR);
  const HANDLE second = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  // Another thread can take it, and leaves it abandoned when it ends.
  std::thread([&] { EXPECT_EQ(::WaitForSingleObject(first, 0), WAIT_OBJECT_0); }).join();
  EXPECT_EQ(::WaitForSingleObject(second, 0), WAIT_ABANDONED);
  std::thread([&] { EXPECT_EQ(::WaitForSingleObject(first, 0), WAIT_TIMEOUT); }).join();
  EXPECT_TRUE(::ReleaseMutex(second));
  EXPECT_EQ(::WaitForSingleObject(first, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(first));
  EXPECT_TRUE(::CloseHandle(second));
}

TEST_F(NamedMutex, IsGoneWithItsLastHandleEvenWhenItIsOwned) {
  EXPECT_TRUE(::CloseHandle(::CreateMutexW(nullptr, TRUE, kName)));
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::GetLastError(), NO_ERROR);
  std::thread([&] { EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0); }).join();
  EXPECT_TRUE(::CloseHandle(mutex));
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

// Another process that makes the mutex and owns it if it is new, until it is told to let go.
class OtherProcess {
 public:
  OtherProcess() {
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_), 0);
    child_ = ::fork();
    if (child_ == 0) Live(ends_[1]);
  }
  ~OtherProcess() {
    Kill();
    ::close(ends_[0]);
    ::close(ends_[1]);
  }
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  // The last error that its making of the mutex left.
  DWORD Error() const { return Receive(ends_[0]); }
  void Kill() const {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  void LetGo() const {
    Send(ends_[0], 0);
    Receive(ends_[0]);
  }

 private:
  [[noreturn]] static void Live(int end) {
    const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, kName);
    Send(end, ::GetLastError());
    Receive(end);
    ::ReleaseMutex(mutex);
    Send(end, 0);
    ::pause();
    ::_exit(0);
  }
  static void Send(int end, DWORD number) { EXPECT_EQ(::write(end, &number, 4), 4); }
  static DWORD Receive(int end) {
    DWORD number = 0;
    EXPECT_EQ(::read(end, &number, 4), 4);
    return number;
  }

  int ends_[2] = {};
  pid_t child_ = 0;
};

TEST_F(NamedMutex, IsOneMutexForSeveralProcesses) {
  const OtherProcess other;
  EXPECT_EQ(other.Error(), NO_ERROR);
  const HANDLE mutex = ::CreateMutexW(nullptr, TRUE, kName);
  EXPECT_EQ(::GetLastError(), ERROR_ALREADY_EXISTS);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
  other.LetGo();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
  EXPECT_TRUE(::CloseHandle(mutex));
}

TEST_F(NamedMutex, AKilledOwnerLeavesItAbandonedAndNoTraceForTheNextMaker) {
  const OtherProcess other;
  EXPECT_EQ(other.Error(), NO_ERROR);
  const HANDLE mutex = ::CreateMutexW(nullptr, FALSE, kName);
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_TIMEOUT);
  other.Kill();
  EXPECT_EQ(::WaitForSingleObject(mutex, 0), WAIT_ABANDONED);
  EXPECT_TRUE(::CloseHandle(mutex));
  const OtherProcess second;
  EXPECT_EQ(second.Error(), NO_ERROR);
  second.Kill();
  EXPECT_EQ(OtherProcess().Error(), NO_ERROR) << "it exists without a process that has it";
}

}  // namespace
