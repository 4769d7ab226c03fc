#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <set>

#include "platform/service/layer/service_fixture.h"

namespace {

using ServiceProcess = ServiceFixture;

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
  ASSERT_EQ(Stop(service), NO_ERROR);
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
  for (const DWORD control :
       {DWORD{0}, SERVICE_CONTROL_SHUTDOWN, DWORD{11}, DWORD{127}, DWORD{256}, DWORD{0xFFFFFFFF}}) {
    EXPECT_EQ(Control(service, control), ERROR_INVALID_PARAMETER) << control;
  }
  for (const DWORD control : {SERVICE_CONTROL_PAUSE, SERVICE_CONTROL_CONTINUE, DWORD{6}})
    EXPECT_EQ(Control(service, control), ERROR_INVALID_SERVICE_CONTROL) << control;
  EXPECT_EQ(StatusOf(service).dwWaitHint, 0u);
}

TEST_F(ServiceProcess, AServiceThatAcceptsNoStopIsNotStopped) {
  const ScHandle service = RunTestService(L"sample", L"deaf");
  EXPECT_EQ(Stop(service), ERROR_INVALID_SERVICE_CONTROL);
  Signal(service, SIGTERM);
  EXPECT_EQ(Control(service, 128), NO_ERROR) << "the signal ended it";
}

TEST_F(ServiceProcess, AServiceThatIsStartingTakesNoControl) {
  const ScHandle service = CreateTestService(L"sample", L"pending");
  ASSERT_EQ(Start(service), NO_ERROR);
  EXPECT_EQ(Control(service, 128), ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
  EXPECT_EQ(lastStatus_.dwCurrentState, SERVICE_START_PENDING);
  EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING);
}

TEST_F(ServiceProcess, TheTerminationSignalStopsItOnceItRuns) {
  const ScHandle running = RunTestService(L"running", L"normal");
  const ScHandle starting = CreateTestService(L"starting", L"dawdler");
  ASSERT_EQ(Start(starting), NO_ERROR);
  for (const ScHandle* each : {&running, &starting}) {
    Signal(*each, SIGTERM);
    ASSERT_TRUE(AwaitProcessEnd(*each));
    EXPECT_EQ(StatusOf(*each).dwWin32ExitCode, NO_ERROR) << "killed, not stopped";
  }
}

TEST_F(ServiceProcess, AKilledServiceReadsAsAbortedAndStartsAgain) {
  const ScHandle service = RunTestService(L"sample", L"normal");
  Kill(service);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, ERROR_PROCESS_ABORTED);
  EXPECT_EQ(Stop(service), ERROR_SERVICE_NOT_ACTIVE);
  ASSERT_EQ(Start(service), NO_ERROR) << "the dead process's files are in the way";
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_EQ(Control(service, 200), NO_ERROR);
}

TEST_F(ServiceProcess, AStartThatFailsSaysWhyAndLeavesItStopped) {
  const ScHandle dead = CreateTestService(L"dead", L"dead");
  EXPECT_EQ(Start(dead), ERROR_SERVICE_REQUEST_TIMEOUT) << "it never calls its dispatcher";
  EXPECT_EQ(StateOf(dead), SERVICE_STOPPED);
  EXPECT_EQ(ProcessOf(dead), 0u);
  const ScHandle service = CreateTestService(L"sample", L"normal");
  LPCWSTR arguments[] = {L"one"};
  EXPECT_EQ(ErrorOf(::StartServiceW(service.get(), 1, arguments)), ERROR_INVALID_PARAMETER);
  ASSERT_EQ(Change(service, SERVICE_NO_CHANGE, L"\\no\\such\\program"), NO_ERROR);
  EXPECT_EQ(Start(service), ERROR_FILE_NOT_FOUND);
  ASSERT_EQ(Change(service, SERVICE_DISABLED), NO_ERROR);
  EXPECT_EQ(Start(service), ERROR_SERVICE_DISABLED);
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
}

TEST_F(ServiceProcess, ALinkInPlaceOfItsFilesIsNotFollowed) {
  const ScHandle linked = CreateTestService(L"linked", L"normal");
  std::filesystem::create_symlink(machine_.Root() / "elsewhere", ServiceFile("linked.lock"));
  EXPECT_EQ(Start(linked), ERROR_PATH_NOT_FOUND);
  const std::filesystem::path database = ServiceFile("../services.lock");
  ASSERT_TRUE(std::filesystem::remove(database));
  std::filesystem::create_symlink(machine_.Root() / "elsewhere", database);
  EXPECT_EQ(OpenError(L"linked"), ERROR_PATH_NOT_FOUND);
  EXPECT_FALSE(std::filesystem::exists(machine_.Root() / "elsewhere"));
}

TEST_F(ServiceProcess, AProgramPathWithBlanksNeedsNoQuotes) {
  const std::filesystem::path folder = machine_.Root() / "a folder";
  std::filesystem::create_directory(folder);
  std::filesystem::create_symlink(ProgramFile("platform_test_service"), folder / "a program");
  const ScHandle service = CreateTestService(L"sample", L"normal");
  const std::wstring image = (folder / "a program").wstring() + L" normal";
  ASSERT_EQ(Change(service, SERVICE_NO_CHANGE, image.c_str()), NO_ERROR);
  EXPECT_EQ(Start(service), NO_ERROR);
}

TEST_F(ServiceProcess, AStartRightAfterAStopWaitsForTheOldProcess) {
  const ScHandle service = RunTestService(L"sample", L"lingering");
  const DWORD old = ProcessOf(service);
  ASSERT_EQ(Stop(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_STOPPED));
  EXPECT_EQ(ProcessOf(service), old) << "it does not linger, so this test shows nothing";
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  EXPECT_NE(ProcessOf(service), old);
}

TEST_F(ServiceProcess, AMainFunctionThatFailsLeavesNoServiceBehind) {
  for (const auto& [mode, exitCode] : {std::pair(L"deserter", ERROR_PROCESS_ABORTED),
                                       std::pair(L"faulty", ERROR_EXCEPTION_IN_SERVICE)}) {
    const ScHandle service = CreateTestService(mode, mode);
    EXPECT_EQ(Start(service), NO_ERROR);
    ASSERT_TRUE(AwaitProcessEnd(service)) << exitCode;
    EXPECT_EQ(StatusOf(service).dwWin32ExitCode, exitCode);
  }
}

TEST_F(ServiceProcess, AHandlerThatThrowsFailsItsControlAndNothingElse) {
  const ScHandle service = RunTestService(L"sample", L"throwing");
  EXPECT_EQ(Control(service, 200), ERROR_EXCEPTION_IN_SERVICE);
  EXPECT_EQ(Control(service, 201), NO_ERROR);
}

TEST_F(ServiceProcess, DeletedWhileItRunsItGoesWhenItStopsOrIsKilled) {
  for (const bool killed : {false, true}) {
    const ScHandle service = RunTestService(L"sample", L"normal");
    ASSERT_TRUE(::DeleteService(service.get()));
    EXPECT_EQ(ErrorOf(::DeleteService(service.get())), ERROR_SERVICE_MARKED_FOR_DELETE);
    EXPECT_EQ(OpenError(L"sample"), NO_ERROR) << "gone while it runs";
    EXPECT_EQ(CreateError({}), ERROR_SERVICE_MARKED_FOR_DELETE);
    if (killed) {
      Kill(service);
      EXPECT_EQ(Start(service), ERROR_SERVICE_MARKED_FOR_DELETE);
    } else {
      ASSERT_EQ(Stop(service), NO_ERROR);
      ASSERT_TRUE(AwaitProcessEnd(service));
    }
    EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST) << killed;
  }
}

TEST_F(ServiceProcess, ADamagedStatusFileNeitherHidesNorInventsAProcess) {
  const ScHandle running = RunTestService(L"running", L"normal");
  const ScHandle stopped = CreateTestService(L"stopped", L"normal");
  for (const std::string& damage :
       {std::string(), std::string("garbage"), std::string(100'000, '9'), std::string(40, '\0'),
        std::string("service-status-1 1 16 4 1 0 0 0\n"),
        std::string("service-status-1 1 16 99 1 0 0 0 0\n")}) {
    std::ofstream(ServiceFile("running.status")) << damage;
    EXPECT_EQ(StateOf(running), SERVICE_RUNNING) << damage.size();
    EXPECT_EQ(Start(running), ERROR_SERVICE_ALREADY_RUNNING) << damage.size();
    std::ofstream(ServiceFile("stopped.status")) << damage;
    EXPECT_EQ(StateOf(stopped), SERVICE_STOPPED) << damage.size();
    EXPECT_EQ(StatusOf(stopped).dwWin32ExitCode, ERROR_PROCESS_ABORTED) << damage.size();
  }
  EXPECT_EQ(Stop(running), NO_ERROR) << "cannot be stopped any more";
  EXPECT_TRUE(AwaitProcessEnd(running));
}

TEST_F(ServiceProcess, OfManyThatStartItAtOnceOneDoes) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  std::vector<pid_t> starters;
  for (int i = 0; i < 8; ++i) {
    const pid_t starter = ::fork();
    if (starter == 0) ::_exit(static_cast<int>(Start(service) & 0xFF));
    starters.push_back(starter);
  }
  std::multiset<DWORD> results;
  for (const pid_t starter : starters) {
    int status = 0;
    ::waitpid(starter, &status, 0);
    results.insert(static_cast<DWORD>(status) >> 8);
  }
  EXPECT_EQ(results.count(NO_ERROR), 1u);
  EXPECT_EQ(results.count(ERROR_SERVICE_ALREADY_RUNNING & 0xFF), 7u);
}

TEST_F(ServiceProcess, TheDispatcherIsRefusedToAProgramThatNobodyStartedAsAService) {
  std::wstring name = L"sample";
  const SERVICE_TABLE_ENTRYW table[] = {{name.data(), [](DWORD, LPWSTR*) {}}, {nullptr, nullptr}};
  const auto dispatch = [&] { return ErrorOf(::StartServiceCtrlDispatcherW(table)); };
  EXPECT_EQ(dispatch(), ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  // The variable alone, as a program started by a service would find it, makes no service.
  ::setenv("WIN_SERVICE", "sample", 1);
  EXPECT_EQ(dispatch(), ERROR_FAILED_SERVICE_CONTROLLER_CONNECT);
  EXPECT_EQ(ErrorOf(::RegisterServiceCtrlHandlerW(L"sample", [](DWORD) {})),
            ERROR_SERVICE_NOT_IN_EXE);
  SERVICE_STATUS status{};
  EXPECT_EQ(ErrorOf(::SetServiceStatus(nullptr, &status)), ERROR_INVALID_HANDLE);
}

}  // namespace
