// The service control command, run as a user runs it.
#include <sys/wait.h>

#include <array>
#include <cstdio>

#include "platform/service/layer/service_fixture.h"

namespace {

class Winsc : public ServiceFixture {
 protected:
  using Outcome = std::pair<int, std::string>;  // the exit status, and what was written

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
  EXPECT_EQ(Run("query sample").first, 3);
  EXPECT_EQ(Run("start SAMPLE"), Outcome(0, "SAMPLE: started\n"));
  ASSERT_TRUE(AwaitState(service, SERVICE_RUNNING));
  const std::string process = std::to_string(ProcessOf(service));
  EXPECT_EQ(Run("query sample"), Outcome(0, "sample: running, process " + process + "\n"));
  EXPECT_EQ(Run("control sample 128").first, 0);
  EXPECT_EQ(StatusOf(service).dwWaitHint, 128u);
  EXPECT_EQ(Run("stop sample").second, "sample: stopped\n");
  EXPECT_EQ(ProcessOf(service), 0u);
  EXPECT_EQ(Run("refresh sample"), Outcome(0, "sample: refreshed\n"));
  EXPECT_EQ(Run("query sample").second, "sample: stopped, exit code 0\n");
}

TEST_F(Winsc, RootTakesNoRootFolderThatOthersCanWrite) {
  if (::geteuid() != 0) GTEST_SKIP() << "not root";
  const ScHandle service = CreateTestService(L"sample", L"normal");
  const std::string apart = "unshare -m sh -c 'mount -t tmpfs no /var/lib && exec \"$@\"' sh ";
  const std::filesystem::path root = machine_.Root() / "root";
  std::filesystem::permissions(root, std::filesystem::perms(0777));
  const std::string text = Run("query sample", apart).second;
  std::filesystem::permissions(root, std::filesystem::perms(0700));
  EXPECT_TRUE(text.ends_with("sample: no such service (error 1060)\n")) << text;
}

TEST_F(Winsc, FailuresAreSaidWithTheirNumber) {
  const ScHandle driver = CreateDriver(L"adriver", L"System32\\Drivers\\ADriver.sys");
  EXPECT_EQ(Run("start nothing"), Outcome(1, "nothing: no such service (error 1060)\n"));
  EXPECT_EQ(Run("stop adriver"), Outcome(1, "adriver: not running (error 1062)\n"));
  EXPECT_EQ(Run("start adriver"),
            Outcome(1, "adriver: a driver lives in the process that starts it; not started\n"));
}

TEST_F(Winsc, AnInvalidCommandIsAnsweredWithTheUsage) {
  for (const char* arguments : {"", "start", "frob x", "control x", "control x 0", "control x 256",
                                "control x 12x", "control x -1", "stop a b"}) {
    const auto& [status, text] = Run(arguments);
    EXPECT_EQ(status, 2) << arguments;
    EXPECT_TRUE(text.starts_with("usage:")) << arguments;
  }
}

TEST_F(Winsc, AutostartStartsWhatIsToStartWithTheSystemAndOnlyThat) {
  const ScHandle wanted = CreateTestService(L"wanted", L"normal");
  const ScHandle other = CreateTestService(L"other", L"normal");
  const ScHandle broken = CreateTestService(L"broken", L"dead");
  const ScHandle driver = CreateDriver(L"adriver", L"System32\\Drivers\\ADriver.sys");
  for (const ScHandle* each : {&wanted, &broken})
    ASSERT_EQ(Change(*each, SERVICE_AUTO_START), NO_ERROR);
  EXPECT_EQ(Run("autostart").first, 1) << "the failure of one was not told";
  EXPECT_TRUE(AwaitState(wanted, SERVICE_RUNNING));
  EXPECT_EQ(StateOf(other), SERVICE_STOPPED);
  EXPECT_EQ(StateOf(driver), SERVICE_STOPPED);
}

}  // namespace
