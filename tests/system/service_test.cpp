// The real service in a network namespace, with real packets: what its life does to the gate, and
// what it does with a database that it cannot use.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <vector>

#include "lab/network_lab.h"
#include "system/crossings.h"
#include "system/installed_service.h"

namespace {

using leaks::Crossings;
using service::InstalledService;
using testing::Each;
using testing::Gt;
using testing::HasSubstr;
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
