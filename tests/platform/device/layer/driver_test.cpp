#include <sched.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "platform/service/layer/service_fixture.h"

namespace {

constexpr DWORD kReverse = 0x800;
constexpr DWORD kOverstate = 0x804;
constexpr const wchar_t* kImage = L"%SystemRoot%\\system32\\Drivers\\platform_test_driver.sys";
constexpr const wchar_t* kDevice = L"\\\\.\\testmoduledevice";

class Driver : public ServiceFixture {
 protected:
  ~Driver() override {
    ::unsetenv("TEST_DRIVER_ERROR");
    ::unsetenv("TEST_DRIVER_ROOT");
    ::unsetenv("TEST_DRIVER_UNLOADED");
  }
  static HANDLE OpenDevice(const wchar_t* path) {
    return ::CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  static DWORD DeviceError(const wchar_t* path) {
    const HANDLE device = OpenDevice(path);
    const DWORD error = ErrorOf(device != INVALID_HANDLE_VALUE);
    ::CloseHandle(device);
    return error;
  }
  // A driver without a file, with a device that records.
  ScHandle CreateBuiltDriver() {
    machine_.AddDriver(L"Built", L"BuiltDevice");
    return CreateDriver(L"built", L"System32\\Drivers\\Built.sys");
  }
  // The error of a control code with these buffers; 0 of one that succeeded.
  DWORD Send(HANDLE device, DWORD code, std::string in = "", DWORD outBytes = 0) {
    answer_.assign(outBytes, '?');
    returned_ = 0;
    return ErrorOf(::DeviceIoControl(device, code, in.data(), static_cast<DWORD>(in.size()),
                                     answer_.data(), outBytes, &returned_, nullptr));
  }

  std::filesystem::path DriverFile(const char* name) const {
    return machine_.Root() / "root" / "System32" / "Drivers" / name;
  }

  std::string answer_;
  DWORD returned_ = 0;
};

TEST_F(Driver, ASharedObjectBesideTheExecutableIsLoadedAndUnloaded) {
  const ScHandle driver = CreateDriver(L"TestDriver", kImage);
  EXPECT_EQ(DeviceError(kDevice), ERROR_FILE_NOT_FOUND);
  ASSERT_EQ(Start(driver), NO_ERROR);
  EXPECT_EQ(StatusOf(driver).dwServiceType, SERVICE_KERNEL_DRIVER);
  EXPECT_EQ(StateOf(driver), SERVICE_RUNNING);
  EXPECT_EQ(Start(driver), ERROR_SERVICE_ALREADY_RUNNING);
  ASSERT_EQ(machine_.Events().size(), 1u) << "the driver reports one when it is loaded";
  EXPECT_EQ(machine_.Events()[0].source, L"TestDriver");
  EXPECT_EQ(machine_.Events()[0].type, EVENTLOG_WARNING_TYPE);
  EXPECT_EQ(machine_.Events()[0].text, L"loaded \xE4");
  EXPECT_STREQ(std::getenv("TEST_DRIVER_ROOT"), (machine_.Root() / "root").c_str());

  const HANDLE device = OpenDevice(kDevice);
  ASSERT_NE(device, INVALID_HANDLE_VALUE) << ::GetLastError();
  ASSERT_EQ(Send(device, kReverse, "abcd", 3), NO_ERROR);
  EXPECT_EQ(answer_, "cba");
  EXPECT_EQ(returned_, 3u);
  EXPECT_EQ(Send(device, 0x900), ERROR_INVALID_FUNCTION);
  ASSERT_EQ(Send(device, kOverstate, "", 3), NO_ERROR);
  EXPECT_EQ(returned_, 3u) << "more than the buffer holds";

  // The handle outlives the driver and must not lead into its code any more.
  ASSERT_EQ(Stop(driver), NO_ERROR);
  EXPECT_STREQ(std::getenv("TEST_DRIVER_UNLOADED"), "1");
  EXPECT_EQ(Send(device, kReverse, "abcd", 3), ERROR_GEN_FAILURE);
  EXPECT_TRUE(::CloseHandle(device));
  EXPECT_EQ(DeviceError(kDevice), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(StateOf(driver), SERVICE_STOPPED);
  EXPECT_EQ(Stop(driver), ERROR_SERVICE_NOT_ACTIVE);
  EXPECT_EQ(Start(driver), NO_ERROR);
  EXPECT_EQ(Stop(driver), NO_ERROR);
}

TEST_F(Driver, AnImageThatIsNoDriverFailsTheStart) {
  std::ofstream(DriverFile("text.so")) << "not a shared object";
  // A proper shared object that lacks the two functions.
  std::filesystem::copy_file(ProgramFile("sample_module.so"), DriverFile("nodriver.so"));
  std::ofstream(DriverFile("open.so")) << "anybody can write a driver here";
  std::filesystem::permissions(DriverFile("open.so"), std::filesystem::perms(0666));
  const std::pair<const wchar_t*, DWORD> cases[] = {
      {L"System32\\Drivers\\open.sys", ERROR_ACCESS_DENIED},
      {L"System32\\Drivers\\missing.sys", ERROR_FILE_NOT_FOUND},
      {L"SYSTEM32\\DRIVERS\\text.sys", ERROR_BAD_EXE_FORMAT},
      {L"%systemroot%\\System32\\drivers\\nodriver.sys", ERROR_PROC_NOT_FOUND},
  };
  for (const auto& [image, error] : cases) {
    const ScHandle driver = CreateDriver(L"bad", image);
    EXPECT_EQ(Start(driver), error);
    EXPECT_EQ(StateOf(driver), SERVICE_STOPPED);
    EXPECT_EQ(StatusOf(driver).dwWin32ExitCode, error);
    EXPECT_TRUE(::DeleteService(driver.get()));
  }
}

TEST_F(Driver, ADriverThatRefusesToLoadLeavesNoDevice) {
  ::setenv("TEST_DRIVER_ERROR", "50", 1);
  const ScHandle driver = CreateDriver(L"TestDriver", kImage);
  EXPECT_EQ(Start(driver), ERROR_NOT_SUPPORTED);
  EXPECT_EQ(DeviceError(kDevice), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(std::getenv("TEST_DRIVER_UNLOADED"), nullptr) << "unloaded without having loaded";
}

TEST_F(Driver, TakesNoControlsButStopAndInterrogateAndGoesThenIfItIsDeleted) {
  const ScHandle driver = CreateBuiltDriver();
  ASSERT_EQ(Start(driver), NO_ERROR);
  EXPECT_EQ(Control(driver, SERVICE_CONTROL_INTERROGATE), NO_ERROR);
  EXPECT_EQ(Control(driver, 128), ERROR_INVALID_SERVICE_CONTROL);
  ASSERT_TRUE(::DeleteService(driver.get()));
  EXPECT_EQ(OpenError(L"built"), NO_ERROR);
  ASSERT_EQ(Stop(driver), NO_ERROR);
  EXPECT_EQ(OpenError(L"built"), ERROR_SERVICE_DOES_NOT_EXIST);
}

// Another process hosts the driver: it can be seen, neither started nor stopped, until it dies.
TEST_F(Driver, ItsHostsDeathStopsIt) {
  const ScHandle driver = CreateBuiltDriver();
  const pid_t host = ::fork();
  if (host == 0) {
    if (Start(driver) == NO_ERROR) ::raise(SIGSTOP);
    ::_exit(1);
  }
  int status = 0;
  ::waitpid(host, &status, WUNTRACED);
  ASSERT_TRUE(WIFSTOPPED(status)) << "the driver did not start";
  EXPECT_EQ(StateOf(driver), SERVICE_RUNNING);
  EXPECT_EQ(ProcessOf(driver), static_cast<DWORD>(host));
  EXPECT_EQ(Start(driver), ERROR_SERVICE_ALREADY_RUNNING);
  EXPECT_EQ(Stop(driver), ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
  ::kill(host, SIGKILL);
  ::waitpid(host, nullptr, 0);
  EXPECT_EQ(StateOf(driver), SERVICE_STOPPED);
  EXPECT_EQ(StatusOf(driver).dwWin32ExitCode, ERROR_PROCESS_ABORTED);
  EXPECT_EQ(Start(driver), NO_ERROR);
  EXPECT_EQ(Stop(driver), NO_ERROR);
}

constexpr const wchar_t* kFilterImage = L"System32\\Drivers\\IpFltDrv.sys";
constexpr const wchar_t* kFilterDevice = L"\\\\.\\IpFilterDriver";

TEST_F(Driver, TheSystemsFilterDriverHasADeviceWithoutControlCodes) {
  const ScHandle driver = CreateDriver(L"IpFilterDriver", kFilterImage);
  if (Start(driver) == ERROR_FILE_NOT_FOUND) GTEST_SKIP() << "the kernel has no nf_tables";
  ASSERT_EQ(StateOf(driver), SERVICE_RUNNING);
  const HANDLE device = OpenDevice(kFilterDevice);
  if (device == INVALID_HANDLE_VALUE) {
    EXPECT_EQ(::GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(Stop(driver), NO_ERROR);
    GTEST_SKIP() << "no right to use nf_tables";
  }
  EXPECT_EQ(Send(device, 0x128058), ERROR_INVALID_FUNCTION);
  ::CloseHandle(device);
  EXPECT_EQ(Stop(driver), NO_ERROR);
  EXPECT_EQ(DeviceError(kFilterDevice), ERROR_FILE_NOT_FOUND);
}

TEST_F(Driver, WithoutTheRightTheSystemsFilterDeviceIsDenied) {
  const ScHandle driver = CreateDriver(L"IpFilterDriver", kFilterImage);
  constexpr int kNoNamespace = 77;
  const pid_t child = ::fork();
  if (child == 0) {
    // In a user namespace of its own, a process has no rights over the network outside.
    if (::unshare(CLONE_NEWUSER) != 0) ::_exit(kNoNamespace);
    const DWORD error = Start(driver);
    if (error == ERROR_FILE_NOT_FOUND) ::_exit(kNoNamespace);
    ::_exit(error == NO_ERROR && DeviceError(kFilterDevice) == ERROR_ACCESS_DENIED ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (WEXITSTATUS(status) == kNoNamespace) GTEST_SKIP() << "no user namespaces, or no nf_tables";
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
