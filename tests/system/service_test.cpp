// The real service in a network namespace, with real packets: what its life does to the gate, and
// what it does with a database that it cannot use.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <thread>

#include "lab/network_lab.h"
#include "system/crossings.h"
#include "system/installed_service.h"

namespace {

using leaks::Crossings;
using leaks::kAllCross;
using leaks::kNoneCross;
using service::InstalledService;
using testing::HasSubstr;
using testing::Not;

constexpr char kHourBlocked[] = "You are not allowed to connect at this hour.";
constexpr char kEnabled[] = "Internet connection enabled";

class RealService : public testing::Test {
 protected:
  void SetUp() override {
    const std::string whyNot = lab::NetworkNamespace::WhyNot();
    if (!whyNot.empty()) GTEST_SKIP() << whyNot;
    lab_ = std::make_unique<lab::NetworkLab>();
    service_ = std::make_unique<InstalledService>(lab_->Host());
  }

  // Every kind of conversation begins anew: ones that stood still behind a closed gate have backed
  // off too far to be of use.
  void ExpectOpen(const char* when) {
    crossings_ = std::make_unique<Crossings>(*lab_);
    EXPECT_THAT(crossings_->Try(), kAllCross) << when;
  }
  void ExpectClosed(const char* when) { EXPECT_THAT(crossings_->Try(), kNoneCross) << when; }

  void StartBlocked() {
    service_->LogOnToSystem(false);
    ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  }
  void StartOpen() {
    service_->LogOnToSystem(true);
    ASSERT_TRUE(service_->Start(kEnabled)) << service_->Log();
  }

  std::unique_ptr<lab::NetworkLab> lab_;
  std::unique_ptr<InstalledService> service_;
  std::unique_ptr<Crossings> crossings_;
};

TEST_F(RealService, TheGateFollowsTheUserThroughKillRestartAndStop) {
  ExpectOpen("before the first start");
  StartBlocked();
  ExpectClosed("for a user whose hours are blocked");
  service_->Kill();
  ExpectClosed("after a kill");
  std::string state;
  service_->Run("./winsc query qgserv", &state);
  EXPECT_THAT(state, HasSubstr("stopped"));
  ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  ExpectClosed("after the restart");
  service_->Stop();
  ExpectOpen("after an orderly stop");
}

TEST_F(RealService, ALogonOfAnotherSystemUserSwitchesTheGateAtOnce) {
  StartOpen();
  ExpectOpen("for a user who may connect");
  service_->Must("./winsc control qgserv 129");
  ExpectClosed("after the log-off");
  service_->Must("./winsc control qgserv 128");
  ExpectOpen("after the logon");
  EXPECT_EQ(service_->Sql("SELECT COUNT(*) FROM ConnLog WHERE User = 'anna';"), "1");
  service_->Stop();
}

TEST_F(RealService, RemovingItAfterAKillOpensTheGateThatNobodyElseWould) {
  StartBlocked();
  service_->Kill();
  service_->Must("./qgserv Uninstall");
  ExpectOpen("after the removal");
  EXPECT_NE(service_->Run("./winsc query qgserv"), 0);
}

// Before the service knows the user it lets everything pass, at every one of its starts.
TEST_F(RealService, KillsWhileItStartsLetNothingThroughAGateThatWasClosed) {
  leaks::Flood flood(*lab_);
  StartBlocked();
  lab_->Forget();
  flood.Begin(std::chrono::microseconds(50));
  std::mt19937 random{std::random_device()()};
  std::uniform_int_distribution<int> microseconds(0, 200'000);
  for (int start = 0; start < 10; ++start) {
    service_->Kill();
    for (int kill = 0; kill < 2; ++kill)
      service_->KillWhileStarting(std::chrono::microseconds(microseconds(random)));
    ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  }
  EXPECT_GT(flood.Sent(), 1000);
  EXPECT_EQ(flood.Arrived(), 0u);
  service_->Kill();
  StartOpen();
  for (int i = 0; i < 1000 && flood.Arrived() == 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
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
  service_->LogOnToSystem(false);
  const SilentDisplay display;
  for (const char* file : {"windesktop.so", "windesktop_probe"})
    service_->Copy(file);
  service_->Must("export DISPLAY=:" + display.number + "; ./winsc start qgserv");
  // The first cycle has mirrored the session before the display is given up.
  while (service_->Sql("SELECT COUNT(*) FROM CrashLog WHERE User = 'anna';") != "1") {
    ASSERT_THAT(service_->Log(), Not(HasSubstr("desktop cannot be reached")));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  const auto begin = std::chrono::steady_clock::now();
  service_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
  ExpectOpen("after the stop");
}

TEST_F(RealService, ADatabaseThatCannotBeUsedIsNamedAndLeftAlone) {
  const std::filesystem::path file = service_->Folder() / "quillgate.dat";
  for (const char* suffix : {"", "-wal", "-shm"})
    std::filesystem::remove(file.string() + suffix);
  const std::string text = "This was a letter to my aunt, not a database of any kind.\n";
  lab::WriteFile(file, text);
  std::string output;
  EXPECT_EQ(service_->Run("./qgserv", &output), 1);
  EXPECT_THAT(output, HasSubstr("not a database"));
  EXPECT_EQ(lab::ReadFile(file), text);

  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(service_->Run("./qgserv", &output), 1);
  EXPECT_THAT(output, HasSubstr("folder"));
  EXPECT_NE(service_->Run("./winsc start qgserv", &output), 0) << "it cannot run";
}

}  // namespace
