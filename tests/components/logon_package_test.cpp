// The logon notification package: what it stores, whom it tells, and that both arrive when somebody
// comes to the machine's screen.
#include <windows.h>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <winreg.h>
#include <winwlx.h>

#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include "components/engine_library.h"
#include "lab/database_folder.h"
#include "logind/fake_logind.h"
#include "platform/kernel/path.h"
#include "platform/registry/registry_key.h"
#include "platform/service/layer/service_fixture.h"

namespace {

using namespace std::chrono_literals;

constexpr wchar_t kPackageKey[] =
    L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\Notify\\qgwlnp";

// The process that notifies packages.
class LogonProcess {
 public:
  LogonProcess() { Start(); }
  ~LogonProcess() { End(); }
  LogonProcess(const LogonProcess&) = delete;
  LogonProcess& operator=(const LogonProcess&) = delete;

  void Start() {
    std::string file = std::filesystem::read_symlink("/proc/self/exe").parent_path() / "winlogon";
    char* const words[] = {file.data(), nullptr};
    EXPECT_EQ(::posix_spawn(&process_, file.c_str(), nullptr, nullptr, words, environ), 0);
  }
  void End() {
    if (process_ > 0) ::kill(process_, SIGKILL);
    if (process_ > 0) ::waitpid(process_, nullptr, 0);
    process_ = 0;
  }

 private:
  pid_t process_ = 0;
};

// A service that remembers its last control, in a folder with the engine and the package.
class LogonPackage : public ServiceFixture {
 protected:
  LogonPackage() {
    for (const char* file : {"platform_test_service", "qgdbeng.so", "qgwlnp.so"})
      std::filesystem::create_symlink(ProgramFile(file), folder_.Path() / file);
    const std::wstring image =
        platform::WindowsPath(folder_.Path() / "platform_test_service") + L" running";
    service_ = Create({.name = L"qgserv", .image = image.c_str()});
  }
  ~LogonPackage() override {
    const bool isRunning = Stop(service_) == NO_ERROR;
    EXPECT_TRUE(!isRunning || AwaitProcessEnd(service_));
  }

  void StartService() {
    ASSERT_EQ(Start(service_), NO_ERROR);
    ASSERT_TRUE(AwaitState(service_, SERVICE_RUNNING));
  }
  static void* Find(const char* name) {
    static void* const package = ::dlopen(ProgramFile("qgwlnp.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    return package == nullptr ? nullptr : ::dlsym(package, name);
  }
  static void Notify(const char* event, std::wstring user = {}) {
    WLX_NOTIFICATION_INFO info{};
    info.Size = sizeof info;
    info.UserName = user.data();
    reinterpret_cast<void (*)(PWLX_NOTIFICATION_INFO)>(Find(event))(&info);
  }
  static HRESULT Register(const char* name) {
    return reinterpret_cast<HRESULT (*)()>(Find(name))();
  }
  std::string Rows() const { return folder_.StockSqlite("SELECT * FROM WlNpData;"); }
  DWORD LastControl() const { return StatusOf(service_).dwWaitHint; }

  lab::DatabaseFolder folder_;
  ScHandle service_;
};

TEST_F(LogonPackage, TheNameIsTheOnlyRowAndGoesWithTheLogoffOrTheNextStart) {
  StartService();
  folder_.StockSqlite(
      "CREATE TABLE WlNpData (Key, Value);"
      "INSERT INTO WlNpData VALUES ('UserName', 'x'), ('UserName', 'y');");
  Notify("WLEventLogon", L"anna");
  EXPECT_EQ(Rows(), "UserName|anna");
  EXPECT_EQ(LastControl(), 128u);
  Notify("WLEventLogoff", L"anna");
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(LastControl(), 129u);
  Notify("WLEventLogon", L"bo");
  Notify("WLEventStartup");
  EXPECT_EQ(Rows(), "");
  EXPECT_EQ(LastControl(), 128u);
}

TEST_F(LogonPackage, AServiceThatIsDownFindsTheNameAndOneThatIsGoneNeedsNone) {
  Notify("WLEventLogon", L"O'Br\u00e5");
  EXPECT_EQ(Rows(), "UserName|O'Br\u00e5");
  ASSERT_TRUE(::DeleteService(service_.get()));
  service_.reset();
  Notify("WLEventLogon", L"bo");
  EXPECT_EQ(Rows(), "UserName|O'Br\u00e5");
  EXPECT_LT(Register("DllRegisterServer"), 0);
}

TEST_F(LogonPackage, ADatabaseInUseIsWaitedFor) {
  quillgate::EngineConnection other(folder_.File());
  ASSERT_EQ(other.Run("BEGIN IMMEDIATE;").code, 0);
  std::jthread logon([] { Notify("WLEventLogon", L"anna"); });
  std::this_thread::sleep_for(300ms);
  EXPECT_EQ(other.Run("COMMIT;").code, 0);
  logon.join();
  EXPECT_EQ(Rows(), "UserName|anna");
}

TEST_F(LogonPackage, AServiceThatHasReadTheNameBeforeItWasRemovedLearnsOfTheLogoff) {
  StartService();
  quillgate::EngineConnection other(folder_.File());
  ASSERT_EQ(other.Run("BEGIN IMMEDIATE;").code, 0);
  std::jthread logoff([] { Notify("WLEventLogoff", L"anna"); });
  for (int times = 0; times < 2; ++times) {
    EXPECT_TRUE(Await([&] { return LastControl() == 129; }));
    EXPECT_EQ(Control(service_, 128), NO_ERROR);  // stands for a start of the service
  }
  EXPECT_EQ(other.Run("COMMIT;").code, 0);
  logoff.join();
  EXPECT_EQ(LastControl(), 129u);
}

TEST_F(LogonPackage, AKillAtAnyMomentLeavesOneOfTheNames) {
  Notify("WLEventLogon", L"anna");
  for (int round = 0; round < 20; ++round) {
    const pid_t victim = ::fork();
    ASSERT_GE(victim, 0);
    if (victim == 0) ::alarm(60);
    for (int i = 0; victim == 0; ++i)
      Notify("WLEventLogon", i % 2 == 0 ? L"bo" : L"anna");
    std::this_thread::sleep_for(std::chrono::milliseconds(3 * round));
    ::kill(victim, SIGKILL);
    ::waitpid(victim, nullptr, 0);
    EXPECT_THAT(Rows(), testing::AnyOf("UserName|anna", "UserName|bo"));
  }
}

TEST_F(LogonPackage, WhoIsOnTheScreenReachesTheDatabaseAndTheService) {
  const std::string whyNot = logind::FakeLogind::WhyNot();
  if (!whyNot.empty()) GTEST_SKIP() << whyNot;
  StartService();
  logind::FakeLogind fake;
  ASSERT_EQ(Register("DllRegisterServer"), S_OK);
  LogonProcess winlogon;
  const struct {
    const char* what;
    std::function<void()> happens;
    const char* rows;
    DWORD control;
  } steps[] = {
      {"a logon", [&] { fake.Put("1", {"anna"}, "1"); }, "UserName|anna", 128},
      {"a switch to the greeter", [&] { fake.Put("1", {"anna"}, ""); }, "", 129},
      {"a logon while the process is down",
       [&] {
         winlogon.End();
         fake.Put("2", {"bo"}, "2");
         winlogon.Start();
       },
       "UserName|bo", 128},
      {"a logoff while it is down",
       [&] {
         winlogon.End();
         fake.Remove("2");
         winlogon.Start();
       },
       "", 129},
  };
  for (const auto& [what, happens, rows, control] : steps) {
    happens();
    EXPECT_TRUE(Await([&] { return Rows() == rows && LastControl() == control; }))
        << what << ": " << Rows() << " " << LastControl();
  }
  for (int times = 0; times < 2; ++times)
    EXPECT_EQ(Register("DllUnregisterServer"), S_OK);
  EXPECT_EQ(OpenStatus(kPackageKey), 2);
}

}  // namespace
