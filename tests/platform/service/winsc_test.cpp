// The service control command, run as a user runs it.
#include <sys/wait.h>

#include <array>
#include <cstdio>

#include "platform/service/service_fixture.h"

namespace {

class Winsc : public ServiceFixture {
 protected:
  struct Outcome {
    int status;
    std::string text;
  };
  static Outcome Run(const std::string& arguments, const std::string& before = "") {
    const std::string command = before + ProgramFile("winsc").native() + " " + arguments + " 2>&1";
    FILE* pipe = ::popen(command.c_str(), "r");
    std::string text;
    std::array<char, 256> part{};
    while (std::fgets(part.data(), part.size(), pipe) != nullptr)
      text += part.data();
    return {WEXITSTATUS(::pclose(pipe)), text};
  }
};

TEST_F(Winsc, StartsControlsAndStopsUntilTheProcessIsGone) {
  const ScHandle service = CreateTestService(L"sample", L"lingering");
  EXPECT_EQ(Run("query sample").status, 3);
  const Outcome started = Run("start SAMPLE");
  EXPECT_EQ(started.status, 0);
  EXPECT_EQ(started.text, "SAMPLE: started\n");
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const Outcome running = Run("query sample");
  EXPECT_EQ(running.status, 0);
  EXPECT_EQ(running.text, "sample: running, process " + std::to_string(ProcessOf(service)) + "\n");
  EXPECT_EQ(Run("control sample 128").status, 0);
  EXPECT_EQ(StatusOf(service).dwWaitHint, 128u);
  EXPECT_EQ(Run("stop sample").text, "sample: stopped\n");
  EXPECT_EQ(ProcessOf(service), 0u);
  EXPECT_EQ(Run("query sample").text, "sample: stopped, exit code 0\n");
}

TEST_F(Winsc, RootTakesNoRootFolderThatOthersCanWrite) {
  if (::geteuid() != 0) GTEST_SKIP() << "not root";
  const ScHandle service = CreateTestService(L"sample", L"normal");
  const std::string apart = "unshare -m sh -c 'mount -t tmpfs no /var/lib && exec \"$@\"' sh ";
  const std::filesystem::path root = machine_.Root() / "root";
  std::filesystem::permissions(root, std::filesystem::perms(0777));
  const std::string text = Run("query sample", apart).text;
  std::filesystem::permissions(root, std::filesystem::perms(0700));
  EXPECT_TRUE(text.ends_with("sample: no such service (error 1060)\n")) << text;
}

TEST_F(Winsc, FailuresAreSaidWithTheirNumber) {
  const ScHandle driver = CreateDriver(L"adriver", L"System32\\Drivers\\ADriver.sys");
  const struct {
    const char* arguments;
    int status;
    const char* text;
  } cases[] = {
      {"start nothing", 1, "nothing: no such service (error 1060)\n"},
      {"stop adriver", 1, "adriver: not running (error 1062)\n"},
      {"start adriver", 1, "adriver: a driver lives in the process that starts it; not started\n"},
  };
  for (const auto& each : cases) {
    const Outcome outcome = Run(each.arguments);
    EXPECT_EQ(outcome.status, each.status) << each.arguments;
    EXPECT_EQ(outcome.text, each.text);
  }
}

TEST_F(Winsc, WordsThatAreNoCommandAreAnsweredWithTheUsage) {
  for (const char* arguments : {"", "start", "frob x", "control x", "control x 0", "control x 256",
                                "control x 12x", "control x -1", "stop a b"}) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_TRUE(outcome.text.starts_with("usage:")) << arguments;
  }
}

TEST_F(Winsc, AutostartStartsWhatIsToStartWithTheSystemAndOnlyThat) {
  const ScHandle wanted = CreateTestService(L"wanted", L"normal");
  const ScHandle other = CreateTestService(L"other", L"normal");
  const ScHandle broken = CreateTestService(L"broken", L"dead");
  const ScHandle driver = CreateDriver(L"adriver", L"System32\\Drivers\\ADriver.sys");
  for (const ScHandle* each : {&wanted, &broken}) {
    ASSERT_TRUE(::ChangeServiceConfigW(each->Get(), SERVICE_NO_CHANGE, SERVICE_AUTO_START,
                                       SERVICE_NO_CHANGE, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, nullptr));
  }
  EXPECT_EQ(Run("autostart").status, 1) << "the failure of one was not told";
  EXPECT_TRUE(AwaitState(wanted, SERVICE_RUNNING));
  EXPECT_EQ(StateOf(other), SERVICE_STOPPED);
  EXPECT_EQ(StateOf(driver), SERVICE_STOPPED);
}

}  // namespace
