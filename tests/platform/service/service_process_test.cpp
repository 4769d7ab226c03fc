#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>

#include "platform/service/service_fixture.h"

namespace {

class ServiceProcess : public ServiceFixture {
 protected:
  static DWORD Start(const ScHandle& service) {
    return ErrorOf(::StartServiceW(service.Get(), 0, nullptr));
  }
  static DWORD Control(const ScHandle& service, DWORD control) {
    return ErrorOf(::ControlService(service.Get(), control, &lastStatus_));
  }
  static inline SERVICE_STATUS lastStatus_{};
};

TEST_F(ServiceProcess, StartsControlsAndStops) {
  const ScHandle service = CreateTestService(L"Sample", L"normal");
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, ERROR_SERVICE_NEVER_STARTED);
  ::setenv("GCONV_PATH", "/anywhere", 1);
  std::ofstream("/proc/self/oom_score_adj") << 300;
  ASSERT_EQ(Start(service), NO_ERROR);
  std::ofstream("/proc/self/oom_score_adj") << 0;
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const std::string process = "/proc/" + std::to_string(ProcessOf(service));
  std::string text;
  std::getline(std::ifstream(process + "/oom_score_adj"), text);
  EXPECT_LE(std::stoi(text), 0) << "among the first to be killed when memory ends";
  std::getline(std::ifstream(process + "/environ"), text);
  EXPECT_NE(text.find("TZ=UTC"), std::string::npos);
  EXPECT_EQ(text.find("GCONV_PATH"), std::string::npos) << "the caller chooses its libraries";
  EXPECT_EQ(StatusOf(service).dwCheckPoint, 1u) << "not started in the system's folder";
  EXPECT_EQ(StatusOf(service).dwServiceSpecificExitCode, 1u) << "not one argument, its name";
  EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING);

  for (const DWORD control : {DWORD{128}, DWORD{129}, DWORD{255}, SERVICE_CONTROL_INTERROGATE}) {
    ASSERT_EQ(Control(service, control), NO_ERROR) << control;
    EXPECT_EQ(lastStatus_.dwWaitHint, control) << "the handler had not returned";
  }
  ASSERT_EQ(Control(service, SERVICE_CONTROL_STOP), NO_ERROR);
  EXPECT_NE(lastStatus_.dwCurrentState, SERVICE_RUNNING);
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, NO_ERROR);
  EXPECT_FALSE(std::filesystem::exists(ServiceFile("sample.sock")));
  // Its standard error, where sanitizers write too.
  EXPECT_EQ(std::filesystem::file_size(ServiceFile("sample.log")), 0u);
}

TEST_F(ServiceProcess, ControlsThatCannotBeSentNeverReachTheHandler) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  EXPECT_EQ(Control(service, 128), ERROR_SERVICE_NOT_ACTIVE);
  EXPECT_EQ(lastStatus_.dwCurrentState, SERVICE_STOPPED);
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const struct {
    DWORD control;
    DWORD error;
  } cases[] = {
      {0, ERROR_INVALID_PARAMETER},
      {SERVICE_CONTROL_SHUTDOWN, ERROR_INVALID_PARAMETER},
      {11, ERROR_INVALID_PARAMETER},
      {127, ERROR_INVALID_PARAMETER},
      {256, ERROR_INVALID_PARAMETER},
      {0xFFFFFFFF, ERROR_INVALID_PARAMETER},
      {SERVICE_CONTROL_PAUSE, ERROR_INVALID_SERVICE_CONTROL},
      {SERVICE_CONTROL_CONTINUE, ERROR_INVALID_SERVICE_CONTROL},
      {6, ERROR_INVALID_SERVICE_CONTROL},
  };
  for (const auto& each : cases)
    EXPECT_EQ(Control(service, each.control), each.error) << each.control;
  EXPECT_EQ(StatusOf(service).dwWaitHint, 0u);
}

TEST_F(ServiceProcess, AServiceThatAcceptsNoStopIsNotStopped) {
  const ScHandle service = CreateTestService(L"sample", L"deaf");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_EQ(Control(service, SERVICE_CONTROL_STOP), ERROR_INVALID_SERVICE_CONTROL);
  ::kill(static_cast<pid_t>(ProcessOf(service)), SIGTERM);
  EXPECT_EQ(Control(service, 128), NO_ERROR) << "the signal ended it";
}

TEST_F(ServiceProcess, AServiceThatIsStartingTakesNoControl) {
  const ScHandle service = CreateTestService(L"sample", L"pending");
  ASSERT_EQ(Start(service), NO_ERROR);
  EXPECT_EQ(Control(service, 128), ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
  EXPECT_EQ(lastStatus_.dwCurrentState, SERVICE_START_PENDING);
  EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING);
}

TEST_F(ServiceProcess, TheTerminationSignalIsTheStopControl) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  ::kill(static_cast<pid_t>(ProcessOf(service)), SIGTERM);
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, NO_ERROR) << "killed, not stopped";
}

TEST_F(ServiceProcess, AStopSignalDuringTheStartWaitsForItsEnd) {
  const ScHandle service = CreateTestService(L"sample", L"dawdler");
  ASSERT_EQ(Start(service), NO_ERROR);
  ::kill(static_cast<pid_t>(ProcessOf(service)), SIGTERM);
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, NO_ERROR);
}

TEST_F(ServiceProcess, AKilledServiceReadsAsAbortedAndStartsAgain) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  Kill(service);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, ERROR_PROCESS_ABORTED);
  EXPECT_EQ(Control(service, SERVICE_CONTROL_STOP), ERROR_SERVICE_NOT_ACTIVE);
  ASSERT_EQ(Start(service), NO_ERROR) << "the dead process's files are in the way";
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_EQ(Control(service, 200), NO_ERROR);
}

TEST_F(ServiceProcess, AProgramThatNeverCallsItsDispatcherFailsToStart) {
  const ScHandle service = CreateTestService(L"sample", L"dead");
  EXPECT_EQ(Start(service), ERROR_SERVICE_REQUEST_TIMEOUT);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(ProcessOf(service), 0u);
}

TEST_F(ServiceProcess, WhatCannotBeStartedSaysWhy) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  ASSERT_TRUE(::ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                     SERVICE_NO_CHANGE, L"\\no\\such\\program", nullptr, nullptr,
                                     nullptr, nullptr, nullptr, nullptr));
  EXPECT_EQ(Start(service), ERROR_FILE_NOT_FOUND);
  ASSERT_TRUE(::ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, SERVICE_DISABLED,
                                     SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr));
  EXPECT_EQ(Start(service), ERROR_SERVICE_DISABLED);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  const ScHandle linked = CreateTestService(L"linked", L"normal");
  std::filesystem::create_symlink(machine_.Root() / "elsewhere", ServiceFile("linked.lock"));
  EXPECT_EQ(Start(linked), ERROR_PATH_NOT_FOUND);
  EXPECT_FALSE(std::filesystem::exists(machine_.Root() / "elsewhere")) << "a link was followed";
}

TEST_F(ServiceProcess, AProgramPathWithBlanksNeedsNoQuotes) {
  const std::filesystem::path folder = machine_.Root() / "a folder";
  std::filesystem::create_directory(folder);
  std::filesystem::create_symlink(ProgramFile("platform_test_service"), folder / "a program");
  const ScHandle service = CreateTestService(L"sample", L"normal");
  std::wstring image = (folder / "a program").wstring() + L" normal";
  ASSERT_TRUE(::ChangeServiceConfigW(service.Get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                     SERVICE_NO_CHANGE, image.c_str(), nullptr, nullptr, nullptr,
                                     nullptr, nullptr, nullptr));
  EXPECT_EQ(Start(service), NO_ERROR);
}

TEST_F(ServiceProcess, AStartRightAfterAStopWaitsForTheOldProcess) {
  const ScHandle service = CreateTestService(L"sample", L"lingering");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const DWORD old = ProcessOf(service);
  ASSERT_EQ(Control(service, SERVICE_CONTROL_STOP), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_STOPPED));
  EXPECT_EQ(ProcessOf(service), old) << "it does not linger, so this test shows nothing";
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_NE(ProcessOf(service), old);
}

TEST_F(ServiceProcess, AMainFunctionThatFailsLeavesNoServiceBehind) {
  const struct {
    const wchar_t* mode;
    DWORD exitCode;
  } cases[] = {{L"deserter", ERROR_PROCESS_ABORTED}, {L"faulty", ERROR_EXCEPTION_IN_SERVICE}};
  for (const auto& each : cases) {
    const ScHandle service = CreateTestService(each.mode, each.mode);
    EXPECT_EQ(Start(service), NO_ERROR);
    ASSERT_TRUE(AwaitProcessEnd(service)) << each.exitCode;
    EXPECT_EQ(StatusOf(service).dwWin32ExitCode, each.exitCode);
  }
}

TEST_F(ServiceProcess, AHandlerThatThrowsFailsItsControlAndNothingElse) {
  const ScHandle service = CreateTestService(L"sample", L"throwing");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_EQ(Control(service, 200), ERROR_EXCEPTION_IN_SERVICE);
  EXPECT_EQ(Control(service, 201), NO_ERROR);
}

TEST_F(ServiceProcess, DeletedWhileItRunsItGoesWhenItStops) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  ASSERT_TRUE(::DeleteService(service.Get()));
  EXPECT_EQ(ErrorOf(::DeleteService(service.Get())), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(OpenError(L"sample"), NO_ERROR) << "gone while it runs";
  EXPECT_EQ(CreateTestService(L"sample", L"normal").Get(), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_SERVICE_MARKED_FOR_DELETE);
  ASSERT_EQ(Control(service, SERVICE_CONTROL_STOP), NO_ERROR);
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST);
}

TEST_F(ServiceProcess, DeletedWhileItRunsItGoesAlsoWhenItIsKilled) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(::DeleteService(service.Get()));
  Kill(service);
  EXPECT_EQ(ErrorOf(::StartServiceW(service.Get(), 0, nullptr)), ERROR_SERVICE_MARKED_FOR_DELETE);
  EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST);
}

TEST_F(ServiceProcess, ADamagedStatusFileNeitherHidesNorInventsAProcess) {
  const std::string damages[] = {"",
                                 "garbage",
                                 std::string(100'000, '9'),
                                 "service-status-1 1 16 4 1 0 0 0\n",
                                 "service-status-1 1 16 99 1 0 0 0 0\n",
                                 std::string(40, '\0')};
  const ScHandle service = CreateTestService(L"sample", L"normal");
  for (const std::string& damage : damages) {
    std::ofstream(ServiceFile("sample.status")) << damage;
    EXPECT_EQ(StateOf(service), SERVICE_STOPPED) << damage.size();
    EXPECT_EQ(StatusOf(service).dwWin32ExitCode, ERROR_PROCESS_ABORTED) << damage.size();
  }
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  for (const std::string& damage : damages) {
    std::ofstream(ServiceFile("sample.status")) << damage;
    EXPECT_EQ(StateOf(service), SERVICE_RUNNING) << damage.size();
    EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING) << damage.size();
  }
  EXPECT_EQ(Control(service, SERVICE_CONTROL_STOP), NO_ERROR) << "cannot be stopped any more";
  EXPECT_TRUE(AwaitProcessEnd(service));
}

TEST_F(ServiceProcess, OfManyThatStartItAtOnceOneDoes) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  std::vector<pid_t> starters;
  for (int i = 0; i < 8; ++i) {
    const pid_t starter = ::fork();
    if (starter == 0) ::_exit(Start(service) == NO_ERROR ? 0 : ::GetLastError() == 1056 ? 1 : 2);
    starters.push_back(starter);
  }
  int results[3] = {};
  for (const pid_t starter : starters) {
    int status = 0;
    ::waitpid(starter, &status, 0);
    ++results[WIFEXITED(status) ? WEXITSTATUS(status) : 2];
  }
  EXPECT_EQ(results[0], 1);
  EXPECT_EQ(results[1], 7);
}

TEST_F(ServiceProcess, TheDispatcherIsRefusedToAProgramThatNobodyStartedAsAService) {
  std::wstring name = L"sample";
  const SERVICE_TABLE_ENTRYW table[] = {{name.data(), [](DWORD, LPWSTR*) {}}, {nullptr, nullptr}};
  EXPECT_EQ(ErrorOf(::StartServiceCtrlDispatcherW(table)), ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  // The variable alone, as a program started by a service would find it, makes no service.
  ::setenv("WIN_SERVICE", "sample", 1);
  EXPECT_EQ(ErrorOf(::StartServiceCtrlDispatcherW(table)), ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  EXPECT_EQ(::RegisterServiceCtrlHandlerW(L"sample", [](DWORD) {}), nullptr);
  EXPECT_EQ(::GetLastError(), ERROR_SERVICE_NOT_IN_EXE);
  SERVICE_STATUS status{};
  EXPECT_EQ(ErrorOf(::SetServiceStatus(nullptr, &status)), ERROR_INVALID_HANDLE);
}

TEST_F(ServiceProcess, ArgumentsThatCannotBePassedAreNotDroppedSilently) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  LPCWSTR arguments[] = {L"one"};
  EXPECT_EQ(ErrorOf(::StartServiceW(service.Get(), 1, arguments)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
}

}  // namespace
