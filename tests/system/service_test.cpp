// The real service in a network namespace, with real packets: what its life does to the gate, and
// what it does with a database that it cannot use.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include "lab/file_descriptor.h"
#include "lab/network_lab.h"
#include "system/crossings.h"
#include "system/installed_service.h"

namespace {

using leaks::Crossings;
using service::InstalledService;
using testing::Each;
using testing::Gt;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;

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

  // Begins every kind of conversation anew: ones that stood still behind a closed gate have backed
  // off too far to be of use.
  void Establish() {
    crossings_.clear();
    for (const lab::Addresses* ip : {&lab::kIp4, &lab::kIp6}) {
      for (const auto protocol : {lab::Protocol::kTcp, lab::Protocol::kUdp, lab::Protocol::kIcmp}) {
        crossings_.push_back(std::make_unique<Crossings>(*lab_, *ip, protocol));
        ASSERT_TRUE(crossings_.back()->Establish());
      }
    }
  }

  void ExpectOpen(const char* when) {
    Establish();
    for (const auto& each : crossings_)
      EXPECT_THAT(each->Try(), Each(Pair(testing::_, Gt(0u)))) << when;
  }
  void ExpectClosed(const char* when) {
    for (const auto& each : crossings_)
      EXPECT_THAT(each->Try(), Each(Pair(testing::_, 0u))) << when;
  }

  std::unique_ptr<lab::NetworkLab> lab_;
  std::unique_ptr<InstalledService> service_;
  std::vector<std::unique_ptr<Crossings>> crossings_;
};

TEST_F(RealService, TheGateFollowsTheUserThroughKillRestartAndStop) {
  ExpectOpen("before the first start");
  service_->LogOnToSystem({.name = "anna", .allowedAtAnyHour = false});
  ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  ExpectClosed("for a user whose hours are blocked");
  service_->Kill();
  ExpectClosed("after a kill");
  EXPECT_THAT(service_->State(), HasSubstr("stopped"));
  ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  ExpectClosed("after the restart");
  service_->Stop();
  ExpectOpen("after an orderly stop");
}

TEST_F(RealService, ALogonOfAnotherSystemUserSwitchesTheGateAtOnce) {
  service_->LogOnToSystem({.name = "anna", .allowedAtAnyHour = true});
  ASSERT_TRUE(service_->Start(kEnabled)) << service_->Log();
  std::string output;
  ASSERT_EQ(service_->Run("./winsc control qgserv 129", &output), 0) << output;
  ExpectClosed("after the log-off");
  ASSERT_EQ(service_->Run("./winsc control qgserv 128", &output), 0) << output;
  ExpectOpen("after the logon");
  EXPECT_EQ(service_->Sql("SELECT COUNT(*) FROM ConnLog WHERE User = 'anna';"), "1\n");
  service_->Stop();
}

TEST_F(RealService, RemovingItAfterAKillOpensTheGateThatNobodyElseWould) {
  service_->LogOnToSystem({.name = "anna", .allowedAtAnyHour = false});
  ASSERT_TRUE(service_->Start(kHourBlocked)) << service_->Log();
  service_->Kill();
  std::string output;
  ASSERT_EQ(service_->Run("./qgserv Uninstall", &output), 0) << output;
  ExpectOpen("after the removal");
  EXPECT_NE(service_->Run("./winsc query qgserv"), 0);
}

// A display server that takes connections and never answers; its socket is in the file system, so
// it is reached from every network namespace.
class SilentDisplay {
 public:
  SilentDisplay() : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    std::filesystem::create_directories(kFolder);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Path().native().copy(address.sun_path, sizeof address.sun_path - 1);
    const bool listens =
        ::bind(socket_.Get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
        ::listen(socket_.Get(), 8) == 0;
    if (!listens) throw std::runtime_error("no display");
  }
  ~SilentDisplay() { std::filesystem::remove(Path()); }
  SilentDisplay(const SilentDisplay&) = delete;
  SilentDisplay& operator=(const SilentDisplay&) = delete;

  static std::string Name() { return ":" + std::to_string(10'000 + ::getpid()); }

 private:
  static constexpr const char* kFolder = "/tmp/.X11-unix";
  static std::filesystem::path Path() {
    return std::filesystem::path(kFolder) / ("X" + Name().substr(1));
  }
  lab::FileDescriptor socket_;
};

TEST_F(RealService, ADisplayThatNeverAnswersKeepsNobodyOnLineAndTheServiceStops) {
  service_->LogOnToSystem({.name = "anna", .allowedAtAnyHour = false});
  const SilentDisplay display;
  const std::filesystem::path build = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  for (const char* file : {"windesktop.so", "windesktop_probe"})
    std::filesystem::copy(build / file, service_->ProgramFolder() / file);
  std::string output;
  ASSERT_EQ(service_->Run("export DISPLAY=" + display.Name() + "; ./winsc start qgserv", &output),
            0)
      << output;
  // The first cycle has mirrored the session before the display is given up.
  while (service_->Sql("SELECT COUNT(*) FROM CrashLog WHERE User = 'anna';") != "1\n") {
    ASSERT_THAT(service_->Log(), Not(HasSubstr("desktop cannot be reached")));
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  const auto begin = std::chrono::steady_clock::now();
  service_->Stop();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
  ExpectOpen("after the stop");
}

TEST_F(RealService, ADatabaseThatCannotBeUsedIsNamedAndLeftAlone) {
  const std::filesystem::path file = service_->ProgramFolder() / "quillgate.dat";
  for (const char* suffix : {"", "-wal", "-shm"})
    std::filesystem::remove(file.string() + suffix);
  const std::string text = "This was a letter to my aunt, not a database of any kind.\n";
  std::ofstream(file) << text;
  std::string output;
  EXPECT_EQ(service_->Run("./qgserv", &output), 1);
  EXPECT_THAT(output, HasSubstr("not a database"));
  std::ostringstream kept;
  kept << std::ifstream(file).rdbuf();
  EXPECT_EQ(kept.str(), text);

  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(service_->Run("./qgserv", &output), 1);
  EXPECT_THAT(output, HasSubstr("folder"));
  EXPECT_TRUE(std::filesystem::is_directory(file));
  EXPECT_NE(service_->Run("./winsc start qgserv", &output), 0) << "it cannot run";
}

}  // namespace
