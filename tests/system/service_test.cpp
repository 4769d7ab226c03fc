// The real service in a network namespace, with real packets: what its life does to the gate, and
// what it does with a database that it cannot use.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "lab/database_folder.h"
#include "lab/network_lab.h"
#include "system/crossings.h"

namespace {

using namespace std::chrono_literals;
using leaks::Crossings;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

constexpr char kHourBlocked[] = "You are not allowed to connect at this hour.";
constexpr char kEnabled[] = "Internet connection enabled";

std::vector<pid_t> ProcessesOf(const std::filesystem::path& executable) {
  std::vector<pid_t> found;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const pid_t process = std::atoi(entry.path().filename().c_str());
    std::error_code error;
    const auto runs = std::filesystem::read_symlink(entry.path() / "exe", error);
    if (process != 0 && !error && runs == executable) found.push_back(process);
  }
  return found;
}

// The service in a program folder and a root folder of its own, worked through its command line and
// winsc inside the lab's host, as an administrator would on a machine.
class RealService : public testing::Test {
 protected:
  void SetUp() override {
    const std::string whyNot = lab::NetworkNamespace::WhyNot();
    if (!whyNot.empty()) GTEST_SKIP() << whyNot;
    lab_ = std::make_unique<lab::NetworkLab>();
    for (const char* file : {"qgserv", "winsc", "qggate", "qgdbeng.so", "QGIpHook.so"})
      CopyFromBuild(file);
    Must("./qgserv Install");
    Sql("INSERT INTO Settings VALUES ('845', 'WINDOWS'); CREATE TABLE WlNpData (Key, Value);"
        "INSERT INTO WlNpData VALUES ('UserName', 'anna');");
  }
  void TearDown() override { KillProcesses(); }

  void CopyFromBuild(const std::string& file) const {
    const auto build = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    std::filesystem::copy(build / file, folder_.Path() / file);
  }

  // The exit status and the output of a command in that folder, with the service's root.
  std::pair<int, std::string> Run(const std::string& command) const {
    const std::string printed = lab_->Host().Shell(
        "unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM; cd " + folder_.Path().string() +
        "; export WIN_ROOT=$PWD/root; { " + command + "; } 2>&1; echo status=$?");
    const std::size_t at = printed.rfind("status=");
    return {std::atoi(printed.c_str() + at + 7), printed.substr(0, at)};
  }
  void Must(const std::string& command) const {
    const auto [status, output] = Run(command);
    if (status != 0) throw std::runtime_error(command + ": " + output);
  }
  // What the stock sqlite3 answers.
  std::string Sql(const std::string& statements) const {
    return folder_.StockSqlite(".timeout 5000\n" + statements);
  }
  // Everything the service has logged.
  std::string Log() const { return lab::ReadFile(folder_.Path() / "root/services/qgserv.log"); }

  // From now on the user anna is logged on to the system, who may connect at any hour or at none.
  void LogOnToSystem(bool mayConnect) const {
    const std::string hours(168, mayConnect ? '0' : '1');
    Sql("DELETE FROM Users_Windows; INSERT INTO Users_Windows VALUES"
        " ('anna', '', 'NO', '1', '0', 'NO', '1', '0', '" +
        hours + "', '0');");
  }
  // Starts the service and waits until the log holds the text, for 20 s.
  void Start(const std::string& awaitedText) const {
    const std::size_t before = Log().size();
    Must("./winsc start qgserv");
    for (int i = 0; Log().find(awaitedText, before) == std::string::npos; ++i) {
      if (i == 400) throw std::runtime_error("not logged: " + awaitedText + "\n" + Log());
      std::this_thread::sleep_for(50ms);
    }
  }
  void StartBlocked() const {
    LogOnToSystem(false);
    Start(kHourBlocked);
  }
  void StartOpen() const {
    LogOnToSystem(true);
    Start(kEnabled);
  }
  void Stop() const { Must("./winsc stop qgserv"); }

  // SIGKILL; returns when it counts as stopped.
  void Kill() const {
    if (KillProcesses() == 0) throw std::runtime_error("the service has no process: " + Log());
    // A killed process and a start that has not noticed hold the service's lock a little longer.
    for (int i = 0; Run("./winsc query qgserv | grep stopped").first != 0; ++i) {
      if (i == 1000) throw std::runtime_error("the killed service does not count as stopped");
      std::this_thread::sleep_for(1ms);
    }
  }
  // Starts it and kills it so long after its process has come to be.
  void KillWhileStarting(std::chrono::microseconds after) const {
    Must("(./winsc start qgserv >/dev/null 2>&1 &)");
    for (int i = 0; i < 20'000 && ProcessesOf(folder_.Path() / "qgserv").empty(); ++i)
      std::this_thread::sleep_for(500us);
    std::this_thread::sleep_for(after);
    Kill();
  }
  int KillProcesses() const {
    int killed = 0;
    std::vector<pid_t> found;
    while (!(found = ProcessesOf(folder_.Path() / "qgserv")).empty()) {
      for (const pid_t process : found)
        killed += ::kill(process, SIGKILL) == 0 ? 1 : 0;
      std::this_thread::sleep_for(50ms);
    }
    return killed;
  }

  // Every kind of conversation begins anew: ones that stood still behind a closed gate have backed
  // off too far to be of use.
  void ExpectOpen(const char* when) {
    crossings_ = std::make_unique<Crossings>(*lab_);
    EXPECT_THAT(crossings_->Try(), leaks::kAllCross) << when;
  }
  void ExpectClosed(const char* when) { EXPECT_THAT(crossings_->Try(), leaks::kNoneCross) << when; }

  lab::DatabaseFolder folder_;
  std::unique_ptr<lab::NetworkLab> lab_;
  std::unique_ptr<Crossings> crossings_;
};

TEST_F(RealService, TheGateFollowsTheUserThroughKillRestartAndStop) {
  ExpectOpen("before the first start");
  StartBlocked();
  ExpectClosed("for a user whose hours are blocked");
  Kill();
  ExpectClosed("after a kill");
  Start(kHourBlocked);
  ExpectClosed("after the restart");
  Stop();
  ExpectOpen("after an orderly stop");
}

TEST_F(RealService, AGateThatIsClosedFromTheBootStaysSoUntilAUserIsJudgedOrItIsOpenedByHand) {
  leaks::Flood flood(*lab_);
  ExpectOpen("before");
  Must("./qggate boot closed && ./qggate close");
  ExpectClosed("before the service");
  lab_->Forget();
  flood.Begin(50us);
  StartBlocked();
  flood.Stop();
  EXPECT_GT(flood.Sent(), 1000);
  EXPECT_EQ(flood.Arrived(), 0u) << "while the service starts";
  EXPECT_THAT(Run("./qggate open"), Pair(1, HasSubstr("Stop it first")));
  ExpectClosed("while the service runs");
  Kill();
  Must("./qggate open");
  ExpectOpen("by hand");
  StartOpen();
  EXPECT_THAT(Run("./qggate status"), Pair(0, HasSubstr("renews it\nboot: closed")));
  ExpectOpen("for a user who may connect");
  Stop();
  EXPECT_THAT(Run("./qggate boot open && ./qggate status"), Pair(0, "gate: open\nboot: open\n"));
}

TEST_F(RealService, ALogonOfAnotherSystemUserSwitchesTheGateAtOnce) {
  StartOpen();
  ExpectOpen("for a user who may connect");
  Must("./winsc control qgserv 129");
  ExpectClosed("after the log-off");
  Must("./winsc control qgserv 128");
  ExpectOpen("after the logon");
  EXPECT_EQ(Sql("SELECT COUNT(*) FROM ConnLog WHERE User = 'anna';"), "1");
  Stop();
}

TEST_F(RealService, RemovingItAfterAKillOpensTheGateThatNobodyElseWould) {
  StartBlocked();
  Kill();
  Must("./qgserv Uninstall");
  ExpectOpen("after the removal");
  EXPECT_NE(Run("./winsc query qgserv").first, 0);
}

// Before the service knows the user it lets everything pass, at every one of its starts.
TEST_F(RealService, KillsWhileItStartsLetNothingThroughAGateThatWasClosed) {
  leaks::Flood flood(*lab_);
  StartBlocked();
  lab_->Forget();
  flood.Begin(50us);
  std::mt19937 random{std::random_device()()};
  std::uniform_int_distribution<int> microseconds(0, 200'000);
  for (int start = 0; start < 10; ++start) {
    Kill();
    for (int kill = 0; kill < 2; ++kill)
      KillWhileStarting(std::chrono::microseconds(microseconds(random)));
    Start(kHourBlocked);
  }
  EXPECT_GT(flood.Sent(), 1000);
  EXPECT_EQ(flood.Arrived(), 0u);
  Kill();
  StartOpen();
  for (int i = 0; i < 1000 && flood.Arrived() == 0; ++i)
    std::this_thread::sleep_for(1ms);
  EXPECT_GT(flood.Arrived(), 0u) << "the decision opens it";
}

// A display server that takes connections and never answers; its socket is in the file system, so
// it is reached from every network namespace.
struct SilentDisplay {
  SilentDisplay() {
    std::filesystem::create_directories(path.parent_path());
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = ""};
    path.native().copy(address.sun_path, sizeof address.sun_path - 1);
    const auto* const bound = reinterpret_cast<const sockaddr*>(&address);
    const bool listens =
        ::bind(socket.Get(), bound, sizeof address) == 0 && ::listen(socket.Get(), 8) == 0;
    if (!listens) throw std::runtime_error("no display");
  }
  ~SilentDisplay() { std::filesystem::remove(path); }

  const std::string number = std::to_string(10'000 + ::getpid());
  const std::filesystem::path path = "/tmp/.X11-unix/X" + number;
  const lab::FileDescriptor socket{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST_F(RealService, ADisplayThatNeverAnswersKeepsNobodyOnLineAndTheServiceStops) {
  LogOnToSystem(false);
  const SilentDisplay display;
  for (const char* file : {"windesktop.so", "windesktop_probe"})
    CopyFromBuild(file);
  Must("export DISPLAY=:" + display.number + "; ./winsc start qgserv");
  // The first cycle has mirrored the session before the display is given up.
  while (Sql("SELECT COUNT(*) FROM CrashLog WHERE User = 'anna';") != "1") {
    ASSERT_THAT(Log(), Not(HasSubstr("desktop cannot be reached")));
    std::this_thread::sleep_for(50ms);
  }
  const auto begin = std::chrono::steady_clock::now();
  Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 20s);
  ExpectOpen("after the stop");
}

TEST_F(RealService, ADatabaseThatCannotBeUsedIsNamedAndLeftAlone) {
  const std::filesystem::path file = folder_.File();
  for (const char* suffix : {"", "-wal", "-shm"})
    std::filesystem::remove(file.string() + suffix);
  const std::string text = "This was a letter to my aunt, not a database of any kind.\n";
  lab::WriteFile(file, text);
  EXPECT_THAT(Run("./qgserv"), Pair(1, HasSubstr("not a database")));
  EXPECT_EQ(lab::ReadFile(file), text);

  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_THAT(Run("./qgserv"), Pair(1, HasSubstr("folder")));
  EXPECT_NE(Run("./winsc start qgserv").first, 0) << "it cannot run";
}

}  // namespace
