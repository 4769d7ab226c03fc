// Services as units: what is written for systemd and asked of it, and what a service tells it.
#include <gmock/gmock.h>
#include <systemd/sd-daemon.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "platform/service/layer/fake_systemd.h"
#include "platform/service/layer/service_fixture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SystemdService : public ServiceFixture {
 protected:
  void SetUp() override {
    if (!FakeSystemd::IsAvailable()) GTEST_SKIP() << "no dbus-daemon";
    systemd_ = std::make_unique<FakeSystemd>(machine_.Root());
    machine_.UseSystemd(systemd_->Address(), systemd_->Units());
  }

  std::filesystem::path UnitFile(const std::string& stem = "sample") const {
    return systemd_->Units() / (stem + ".service");
  }
  std::string Unit(const std::string& stem = "sample") const {
    std::ifstream file(UnitFile(stem));
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::unique_ptr<FakeSystemd> systemd_;
};

TEST_F(SystemdService, ItsUnitFollowsTheConfigurationUntilTheServiceIsDeleted) {
  const struct {
    DWORD startType;
    const char *call, *directive;
  } cases[] = {{SERVICE_AUTO_START, "EnableUnitFiles", "Description=Renamed\n"},
               {SERVICE_DISABLED, "DisableUnitFiles", "RefuseManualStart=yes\n"},
               {SERVICE_DEMAND_START, "DisableUnitFiles", "WantedBy=multi-user.target\n"}};
  const std::string unit = " a\\x20sample.service";
  const ScHandle service = CreateTestService(L"A Sample", L"normal");
  systemd_->TakeCalls();
  EXPECT_THAT(Unit("a\\x20sample"), HasSubstr("/a\\\\x20sample.environment\n")) << "not found";
  for (const auto& each : cases) {
    ASSERT_EQ(Change(service, each.startType, nullptr, L"Renamed"), NO_ERROR);
    EXPECT_THAT(systemd_->TakeCalls(), ElementsAre(each.call + unit, "Reload"));
    EXPECT_THAT(Unit("a\\x20sample"), HasSubstr(each.directive));
  }
  EXPECT_EQ(Change(service, SERVICE_NO_CHANGE), NO_ERROR);
  EXPECT_THAT(systemd_->TakeCalls(), ElementsAre("Reload")) << "an administrator's choice was lost";
  std::filesystem::remove(UnitFile("a\\x20sample"));
  EXPECT_EQ(Change(service, SERVICE_NO_CHANGE), NO_ERROR);
  EXPECT_THAT(systemd_->TakeCalls(), ElementsAre("DisableUnitFiles" + unit, "Reload"));
  ASSERT_TRUE(::DeleteService(service.get()));
  EXPECT_THAT(systemd_->TakeCalls(), ElementsAre("DisableUnitFiles" + unit, "Reload"));
  EXPECT_FALSE(std::filesystem::exists(UnitFile("a\\x20sample")));
}

TEST_F(SystemdService, ItRunsAsItsUnitSaysAndTellsHowItFares) {
  const ScHandle service = RunTestService(L"sample", L"living");
  EXPECT_EQ(StatusOf(service).dwCheckPoint, 1u) << "not started in the system's folder";
  EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING);
  EXPECT_EQ(Control(service, 128), NO_ERROR);
  ASSERT_EQ(Stop(service), NO_ERROR);
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, NO_ERROR);
  EXPECT_THAT(systemd_->TakeCalls(), Contains("StopUnit sample.service"));
  // What the handler reports for control 128 is no sign of life.
  const std::vector<std::string> expected = {
      "WATCHDOG_USEC=0", "EXTEND_TIMEOUT_USEC=2000000",
      "READY=1",         "WATCHDOG_USEC=60000000\nWATCHDOG=1",
      "STOPPING=1",      "EXTEND_TIMEOUT_USEC=128000"};
  Await([&] { return systemd_->Notices().size() >= expected.size(); });
  EXPECT_EQ(systemd_->Notices(), expected);
}

TEST_F(SystemdService, AServiceThatFailsHasNotStopped) {
  const ScHandle service = RunTestService(L"sample", L"failing");
  Control(service, 200);  // the process may end before its answer
  ASSERT_TRUE(AwaitProcessEnd(service));
  EXPECT_EQ(StatusOf(service).dwWin32ExitCode, ERROR_PROCESS_ABORTED) << "systemd starts it again";
  EXPECT_THAT(systemd_->Notices(), testing::Not(Contains("STOPPING=1")));
}

TEST_F(SystemdService, AStartThatFailsSaysWhyAndIsNotTriedAgain) {
  const ScHandle service = CreateTestService(L"sample", L"dead");
  EXPECT_EQ(Start(service), ERROR_SERVICE_REQUEST_TIMEOUT) << "it never calls its dispatcher";
  EXPECT_THAT(systemd_->TakeCalls(), Contains("StopUnit sample.service"));
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  std::filesystem::remove(UnitFile());
  EXPECT_EQ(Start(service), ERROR_FILE_NOT_FOUND);
  ASSERT_EQ(Change(service, SERVICE_NO_CHANGE, L"\\no\\such\\program"), NO_ERROR);
  systemd_->TakeCalls();
  EXPECT_EQ(Start(service), ERROR_FILE_NOT_FOUND);
  EXPECT_THAT(systemd_->TakeCalls(), IsEmpty());
}

TEST_F(SystemdService, AStopHoldsADeadServiceThatWouldComeAgainAndNoneThatStarts) {
  const ScHandle service = CreateTestService(L"sample", L"normal");
  systemd_->SetState("activating", "auto-restart");
  EXPECT_EQ(StateOf(service), SERVICE_STOPPED);
  EXPECT_EQ(Stop(service), ERROR_SERVICE_NOT_ACTIVE);
  EXPECT_THAT(systemd_->TakeCalls(), Contains("StopUnit sample.service"));
  systemd_->SetState("activating", "start");
  EXPECT_EQ(StateOf(service), SERVICE_START_PENDING);
  EXPECT_EQ(Start(service), ERROR_SERVICE_ALREADY_RUNNING);
  EXPECT_EQ(Stop(service), ERROR_SERVICE_CANNOT_ACCEPT_CTRL);
  EXPECT_THAT(systemd_->TakeCalls(), IsEmpty());
}

TEST_F(SystemdService, AUnitThatIsNotTheLayersIsNeitherReplacedNorRemoved) {
  std::ofstream(UnitFile()) << "[Service]\nExecStart=/bin/true\n";
  EXPECT_EQ(CreateError({}), ERROR_SERVICE_EXISTS);
  EXPECT_EQ(OpenError(L"sample"), ERROR_SERVICE_DOES_NOT_EXIST);
  EXPECT_EQ(Unit(), "[Service]\nExecStart=/bin/true\n");
}

TEST_F(SystemdService, NoTextOfAServiceAddsADirective) {
  ASSERT_EQ(CreateError({}), NO_ERROR);
  const std::string plain = Unit();
  const auto lines = std::ranges::count(plain, '\n');
  const std::pair<Wanted, const char*> cases[] = {
      {{.name = L"a", .displayName = L"x\nExecStartPre=/bin/false"}, "=x ExecStartPre="},
      {{.name = L"b", .displayName = L"100 %n \\"}, "Description=100 %%n  \n"},
      {{.name = L"c", .image = L"\"\\opt\\a %h\" \"b\nUser=x\" $HOME"},
       "ExecStart=:\"/opt/a %%h\" \"b\\x0aUser=x\" \"$HOME\"\n"},
  };
  for (const auto& [wanted, expected] : cases) {
    ASSERT_EQ(CreateError(wanted), NO_ERROR);
    const std::string unit = Unit(std::filesystem::path(wanted.name).string());
    EXPECT_THAT(unit, HasSubstr(expected));
    EXPECT_EQ(std::ranges::count(unit, '\n'), lines);
  }
}

TEST_F(SystemdService, ItsUnitIsUnderstoodAndLimitsWhatItMayDo) {
  if (std::system("command -v systemd-analyze >/dev/null") != 0) GTEST_SKIP() << "no systemd";
  const ScHandle service = CreateTestService(L"sample", L"normal");
  for (const DWORD type : {0x110u, 0x10u}) {
    ASSERT_TRUE(::ChangeServiceConfigW(service.get(), type, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                                       nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr));
    const std::string file = UnitFile().string();
    EXPECT_NE(
        std::system(
            ("systemd-analyze verify --man=no " + file + " 2>&1 | grep sample.service").c_str()),
        0)
        << "it has directives that systemd does not know";
    EXPECT_EQ(std::system(
                  ("systemd-analyze security --offline=true --threshold=30 " + file + " >/dev/null")
                      .c_str()),
              0)
        << "it is exposed by more than 3.0";
  }
}

TEST_F(ServiceFixture, WithoutItsBusTheLayersOwnKeeperServes) {
  machine_.UseSystemd("unix:path=/no/bus", machine_.Root());
  const ScHandle service = RunTestService(L"sample", L"normal");
  EXPECT_EQ(Stop(service), NO_ERROR);
  EXPECT_FALSE(std::filesystem::exists(machine_.Root() / "sample.service"));
}

// The folder of a machine that its real services see, which have a /tmp of their own.
struct MachineInVarLib {
  MachineInVarLib() {
    if (::geteuid() == 0) ::setenv("TMPDIR", "/var/lib", 1);
  }
  ~MachineInVarLib() { ::unsetenv("TMPDIR"); }
};

class RealSystemd : MachineInVarLib, public ServiceFixture {
 protected:
  void SetUp() override {
    if (::geteuid() != 0 || ::sd_booted() <= 0)
      GTEST_SKIP() << "not root on a machine of systemd's";
    machine_.UseSystemd("unix:path=/run/dbus/system_bus_socket", "/run/systemd/system");
    std::filesystem::copy(ProgramFile("platform_test_service"), machine_.Root() / "program");
  }
  void TearDown() override {
    const ScHandle service = Open(name_);
    if (service == nullptr) return;
    Stop(service);
    ::DeleteService(service.get());
  }
  const std::wstring name_ = L"sample-of-tests-" + std::to_wstring(::getpid());
};

TEST_F(RealSystemd, AKilledServiceComesBackAndAStoppedOneStaysDown) {
  const std::wstring image = (machine_.Root() / "program").wstring() + L" normal";
  const ScHandle service = Create({.name = name_.c_str(), .type = 0x110, .image = image.c_str()});
  ASSERT_EQ(Start(service), NO_ERROR);
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const DWORD first = ProcessOf(service);
  Signal(service, SIGKILL);
  ASSERT_TRUE(
      Await([&] { return ProcessOf(service) != first && StateOf(service) == SERVICE_RUNNING; }));
  ASSERT_EQ(Stop(service), NO_ERROR);
  ASSERT_TRUE(AwaitProcessEnd(service));
  std::this_thread::sleep_for(std::chrono::seconds(1));
  EXPECT_EQ(ProcessOf(service), 0u);
}

}  // namespace
